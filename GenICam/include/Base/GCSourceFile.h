// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Short name of a source file, as exceptions tell it: library folder and stem, such as "GenICam/NodeMap".

#if __cplusplus < 201703L

/// Older dialects can't shorten a name at compile time.
#define KXGC_SOURCE_FILE __FILE__

#else

#include <cstddef>
#include <string_view>

namespace GenICam
{
namespace Detail
{
/// Folders that are a library of their own; below them a subfolder tells a reader nothing more.
inline constexpr std::string_view kLibraryFolders[] = {"GenICam", "KxApi_TL", "KxSDKCommon", "KxApi_IP",
                                                       "KxApi_GUI_qt"};

constexpr bool IsLibraryFolder(std::string_view folder) noexcept
{
    for (const std::string_view library : kLibraryFolders) {
        if (library == folder)
            return true;
    }
    return false;
}

/// The folder to tell for a file in the folders `path`: the innermost library folder, else the innermost
/// folder.
constexpr std::string_view FolderToTell(std::string_view path) noexcept
{
    std::string_view innermost;
    while (!path.empty()) {
        const size_t slash = path.rfind('/');
        const std::string_view folder = slash == path.npos ? path : path.substr(slash + 1);
        if (IsLibraryFolder(folder))
            return folder;
        if (innermost.empty())
            innermost = folder;
        path = slash == path.npos ? std::string_view() : path.substr(0, slash);
    }
    return innermost;
}

/// Text "folder/stem" (or "stem") made from a path, at compile time from a literal.
template <size_t N>
class CSourceFileName
{
public:
    constexpr explicit CSourceFileName(const char (&literal)[N]) noexcept
        : CSourceFileName(std::string_view(literal, N - 1))
    {}
    /// The same at run time; what is longer than N is cut.
    constexpr explicit CSourceFileName(std::string_view path) noexcept
    {
        const size_t slash = path.rfind('/');
        const std::string_view file = slash == path.npos ? path : path.substr(slash + 1);
        if (slash != path.npos)
            Append(FolderToTell(path.substr(0, slash)));
        if (m_length != 0)
            Append("/");
        Append(file.substr(0, file.rfind('.')));
    }
    constexpr const char* Get() const noexcept { return m_text; }

private:
    constexpr void Append(std::string_view part) noexcept
    {
        for (const char ch : part) {
            if (m_length < N)
                m_text[m_length++] = ch;
        }
    }

    char m_text[N + 1] = {};
    size_t m_length = 0;
};
} // namespace Detail
} // namespace GenICam

/// Name of the file that this stands in, a text of static storage.
#define KXGC_SOURCE_FILE                                                                                     \
    ([]() noexcept -> const char* {                                                                          \
        static constexpr ::GenICam::Detail::CSourceFileName kName(__FILE__);                                 \
        return kName.Get();                                                                                  \
    }())

#endif
