// Where the files lie that tests read and load. Only paths.cpp is compiled with these places, so
// that all other objects are the same in every folder of a tree.
#pragma once

#include <string>

namespace paths {

std::string source();  // top folder of the tree
std::string build();   // this build's folder; tests may write into it
std::string plugin();  // the plug-in of this build
std::string rogue();   // a plug-in that breaks rules when asked to
std::string stage();   // the program kestrel-stage

}  // namespace paths
