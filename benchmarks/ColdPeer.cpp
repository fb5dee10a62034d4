// SPDX-License-Identifier: Apache-2.0
// The same program as ColdOwn.cpp with the peer's node map.

#include <arv.h>
#include <unistd.h>

int main(int argc, char** argv)
{
    char* text = nullptr;
    gsize size = 0;
    if (!g_file_get_contents(argc > 1 ? argv[1] : "", &text, &size, nullptr))
        return 2;
    ArvGc* const map = arv_gc_new(nullptr, text, size);
    _exit(map != nullptr && arv_gc_get_node(map, "Root") != nullptr ? 0 : 1);
}
