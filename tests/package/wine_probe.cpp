// Run by run_under_wine_test: shows what arrives in a Windows program.
// wine_probe STATUS ARG...  prints the arguments, copies standard input, and exits with STATUS.
#include <cstdio>
#include <cstdlib>

int main(int count, char **arguments) {
    for (int i = 2; i < count; ++i) std::printf("[%s]", arguments[i]);
    for (int c = std::getchar(); c != EOF; c = std::getchar()) std::putchar(c);
    std::fputs("complaint", stderr);
    return count > 1 ? std::atoi(arguments[1]) : 0;
}
