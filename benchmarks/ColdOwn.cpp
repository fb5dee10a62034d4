// SPDX-License-Identifier: Apache-2.0
// A program that does nothing but load a description and get a node: what a user waits for at its start.

#include <GenApi/GenApi.h>

#include <unistd.h>

int main(int argc, char** argv)
{
    GenApi::CNodeMapRef map;
    map._LoadXMLFromFile(argc > 1 ? argv[1] : "");
    // Gone at once: what counts is the time until the node is there, for the peer as well.
    _exit(map._GetNode("Root") != nullptr ? 0 : 1);
}
