// SPDX-License-Identifier: Apache-2.0

#include "ElfCheck.h"

#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <vector>

namespace KxApi
{
namespace Detail
{
namespace
{

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);
using Dynamic = ElfW(Dyn);

constexpr size_t kMaxSegments = 256;
constexpr uint64_t kMaxDynamicBytes = uint64_t{1} << 20U;

/// A file that is read piece by piece and never waited for.
class CFile
{
public:
    explicit CFile(const std::string& path)
        : m_file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC))
    {}
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;
    ~CFile()
    {
        if (m_file >= 0)
            close(m_file);
    }

    bool IsOpen() const { return m_file >= 0; }
    struct stat Status() const
    {
        struct stat status = {};
        fstat(m_file, &status);
        return status;
    }
    bool Read(void* to, size_t size, uint64_t at) const
    {
        return pread(m_file, to, size, static_cast<off_t>(at)) == static_cast<ssize_t>(size);
    }

private:
    const int m_file;
};

std::string CutShort(uint64_t wanted, uint64_t size)
{
    return "it ends at byte " + std::to_string(size) + " of at least " + std::to_string(wanted) +
           "; is it still being copied?";
}

/// The header of this very program's machine: what `path` has to be too.
std::string FindHeaderFault(const Header& header)
{
    if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0)
        return "invalid ELF header";
    const Header* const own = [] {
        const Header* found = nullptr;
        dl_iterate_phdr(
            [](dl_phdr_info* info, size_t, void* to) {
                // The first segment of an object that the linker loaded begins with the object's header.
                for (int i = 0; i < info->dlpi_phnum; ++i) {
                    const Segment& segment = info->dlpi_phdr[i];
                    if (segment.p_type == PT_LOAD && segment.p_offset == 0) {
                        *static_cast<const Header**>(to) =
                            reinterpret_cast<const Header*>(info->dlpi_addr + segment.p_vaddr);
                        return 1;
                    }
                }
                return 0;
            },
            &found);
        return found;
    }();
    if (own && (header.e_ident[EI_CLASS] != own->e_ident[EI_CLASS] ||
                header.e_ident[EI_DATA] != own->e_ident[EI_DATA] || header.e_machine != own->e_machine))
        return "it is a library for another kind of machine";
    if (header.e_type != ET_DYN)
        return "it is no shared library";
    if (header.e_phentsize != sizeof(Segment) || header.e_phnum == 0 || header.e_phnum > kMaxSegments)
        return "invalid ELF header: " + std::to_string(header.e_phnum) + " segments of " +
               std::to_string(header.e_phentsize) + " bytes";
    return "";
}

bool IsInside(uint64_t begin, uint64_t length, uint64_t size)
{
    return begin <= size && length <= size - begin;
}

/// What the linker follows without a look: a file with holes where its pieces haven't come yet has zeros
/// there.
std::string FindDynamicFault(const CFile& file, const Segment& dynamic, const std::vector<Segment>& segments)
{
    if (dynamic.p_filesz > kMaxDynamicBytes)
        return "its dynamic section of " + std::to_string(dynamic.p_filesz) + " bytes is too long";
    std::vector<Dynamic> entries(dynamic.p_filesz / sizeof(Dynamic));
    if (!file.Read(entries.data(), entries.size() * sizeof(Dynamic), dynamic.p_offset))
        return "its dynamic section can't be read";
    for (const int64_t tag : {DT_STRTAB, DT_SYMTAB}) {
        const auto entry = std::find_if(entries.begin(), entries.end(),
                                        [tag](const Dynamic& candidate) { return candidate.d_tag == tag; });
        const auto holds = [&](const Segment& segment) {
            return segment.p_type == PT_LOAD && entry->d_un.d_ptr >= segment.p_vaddr &&
                   entry->d_un.d_ptr - segment.p_vaddr < segment.p_filesz;
        };
        if (entry == entries.end() || std::none_of(segments.begin(), segments.end(), holds))
            return "its table of symbols is missing; is it still being copied?";
    }
    return "";
}

} // namespace

std::string FindElfFault(const std::string& path)
{
    const CFile file(path);
    if (!file.IsOpen())
        return std::strerror(errno);
    const struct stat status = file.Status();
    if (!S_ISREG(status.st_mode))
        return S_ISFIFO(status.st_mode) ? "it is a FIFO" : "it is no regular file";
    const auto size = static_cast<uint64_t>(status.st_size);
    Header header;
    if (!file.Read(&header, sizeof header, 0))
        return CutShort(sizeof header, size);
    if (std::string fault = FindHeaderFault(header); !fault.empty())
        return fault;
    std::vector<Segment> segments(header.e_phnum);
    const uint64_t tableSize = segments.size() * sizeof(Segment);
    if (!IsInside(header.e_phoff, tableSize, size) || !file.Read(segments.data(), tableSize, header.e_phoff))
        return CutShort(header.e_phoff + tableSize, size);
    // The table of sections is the last thing in a file. The linker needs none, but one that is told of and
    // missing shows that the rest is to come.
    const uint64_t sectionsSize = uint64_t{header.e_shnum} * header.e_shentsize;
    if (!IsInside(header.e_shoff, sectionsSize, size))
        return CutShort(header.e_shoff + sectionsSize, size);
    const Segment* dynamic = nullptr;
    for (const Segment& segment : segments) {
        if (segment.p_filesz != 0 && !IsInside(segment.p_offset, segment.p_filesz, size))
            return CutShort(segment.p_offset + segment.p_filesz, size);
        if (segment.p_type == PT_DYNAMIC)
            dynamic = &segment;
    }
    return dynamic ? FindDynamicFault(file, *dynamic, segments) : "it is no shared library";
}

} // namespace Detail
} // namespace KxApi
