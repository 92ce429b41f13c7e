// Run by run_under_wine_test: shows what arrives in a Windows program.
// wine_probe STATUS ARG...    prints the arguments, copies standard input, and exits with STATUS.
// wine_probe leave SECONDS    shows a window, and leaves a second program behind that does so too.
// wine_probe stay SECONDS     shows a window for that long.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

void show_window() {
    CreateWindowExA(0, "STATIC", "probe", WS_POPUP | WS_VISIBLE, 0, 0, 8, 8, nullptr, nullptr,
                    nullptr, nullptr);
}

bool start_another(const std::string &arguments) {
    char own_path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, own_path, MAX_PATH);
    std::string command = "\"" + std::string(own_path) + "\" " + arguments;
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION made{};
    return CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          &start, &made) != 0;
}

int show_arguments(int count, char **arguments) {
    for (int i = 2; i < count; ++i) std::printf("[%s]", arguments[i]);
    for (int c = std::getchar(); c != EOF; c = std::getchar()) std::putchar(c);
    std::fflush(stdout);
    std::fputs("complaint", stderr);
    return count > 1 ? std::atoi(arguments[1]) : 0;
}

}  // namespace

int main(int count, char **arguments) {
    const std::string word = count == 3 ? arguments[1] : "";
    if (word == "stay") {
        show_window();
        Sleep(static_cast<DWORD>(1000 * std::atoi(arguments[2])));
        return 0;
    }
    if (word == "leave") {
        show_window();
        if (!start_another("stay " + std::string(arguments[2]))) return 1;
        Sleep(1000);  // until the other has its window, and with it the desktop
        std::fputs("left", stdout);
        return 0;
    }
    return show_arguments(count, arguments);
}
