// SPDX-License-Identifier: Apache-2.0
// What any C++ program takes for its start: the least that ColdOwn.cpp can.

#include <unistd.h>

#include <string>

int main(int, char** argv)
{
    // The C++ library is to be loaded, not only named.
    const std::string name = argv[0];
    _exit(name.empty() ? 1 : 0);
}
