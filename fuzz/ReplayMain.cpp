// SPDX-License-Identifier: Apache-2.0
// Runs a fuzz target's entry over files and folders of files, in builds without libFuzzer.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace
{

std::vector<std::filesystem::path> FilesOf(int argc, char** argv)
{
    std::vector<std::filesystem::path> files;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path path(argv[i]);
        if (!std::filesystem::is_directory(path)) {
            files.push_back(path);
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path))
            if (entry.is_regular_file())
                files.push_back(entry.path());
    }
    return files;
}

void Replay(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        throw std::filesystem::filesystem_error("cannot open", path,
                                                std::make_error_code(std::errc::io_error));
    const std::vector<char> content((std::istreambuf_iterator<char>(stream)),
                                    std::istreambuf_iterator<char>());
    // A copy of the exact size lets the address sanitizer see reads past the end.
    const std::vector<std::uint8_t> input(content.begin(), content.end());
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const auto files = FilesOf(argc, argv);
        for (const auto& path : files) {
            std::fprintf(stderr, "%s\n", path.c_str());
            Replay(path);
        }
        // An empty corpus would pass for ever without testing anything.
        std::fprintf(stderr, "%zu inputs replayed\n", files.size());
        return files.empty() ? 1 : 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
}
