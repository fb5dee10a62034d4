// SPDX-License-Identifier: Apache-2.0
#include "description/Zip.h"

#include "description/Diagnostics.h"
#include "description/Limits.h"

#include <dlfcn.h>
#include <minizip/unzip.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <memory>

namespace KxGenApi
{
namespace
{

constexpr std::string_view kEntryMark = "PK\x03\x04";
constexpr size_t kEndRecordBytes = 22;
constexpr size_t kChunk = 64 * 1024;
constexpr uLong kEncrypted = 1; // bit of an entry's flag

// The archive as the file that minizip reads.
struct MemoryFile
{
    std::string_view content;
    size_t position = 0;
};

MemoryFile& FileOf(voidpf stream) { return *static_cast<MemoryFile*>(stream); }

voidpf ZCALLBACK Open(voidpf opaque, const void*, int) { return opaque; }
uLong ZCALLBACK Read(voidpf, voidpf stream, void* buffer, uLong size)
{
    MemoryFile& file = FileOf(stream);
    const size_t count = std::min<size_t>(size, file.content.size() - file.position);
    std::memcpy(buffer, file.content.data() + file.position, count);
    file.position += count;
    return count;
}
uLong ZCALLBACK Write(voidpf, voidpf, const void*, uLong) { return 0; }
ZPOS64_T ZCALLBACK Tell(voidpf, voidpf stream) { return FileOf(stream).position; }
long ZCALLBACK Seek(voidpf, voidpf stream, ZPOS64_T offset, int origin)
{
    MemoryFile& file = FileOf(stream);
    const ZPOS64_T base = origin == ZLIB_FILEFUNC_SEEK_SET   ? 0
                          : origin == ZLIB_FILEFUNC_SEEK_CUR ? file.position
                                                             : file.content.size();
    if (offset > file.content.size() || base + offset > file.content.size())
        return -1;
    file.position = base + offset;
    return 0;
}
int ZCALLBACK Close(voidpf, voidpf) { return 0; }
int ZCALLBACK Error(voidpf, voidpf) { return 0; }

// minizip, loaded when the first archive is read: most programs read none or few, and would wait for it and
// for zlib at every start.
class MiniZip
{
public:
    static const MiniZip& Get()
    {
        static const MiniZip library; // stays until the process ends
        return library;
    }

#define KXAPI_FUNCTION(name) const decltype(&::unz##name) name = Find<decltype(&::unz##name)>("unz" #name)
private:
    static constexpr const char* kFile = "libminizip.so.1";
    void* const m_library = dlopen(kFile, RTLD_NOW | RTLD_LOCAL);

public:
    KXAPI_FUNCTION(Open2_64);
    KXAPI_FUNCTION(Close);
    KXAPI_FUNCTION(GoToFirstFile);
    KXAPI_FUNCTION(GoToNextFile);
    KXAPI_FUNCTION(GetCurrentFileInfo64);
    KXAPI_FUNCTION(OpenCurrentFile);
    KXAPI_FUNCTION(ReadCurrentFile);
    KXAPI_FUNCTION(CloseCurrentFile);
#undef KXAPI_FUNCTION

private:
    MiniZip() = default;

    template <typename Function>
    Function Find(const char* name) const
    {
        void* const function = m_library != nullptr ? dlsym(m_library, name) : nullptr;
        if (function == nullptr)
            Fail({}, std::string("zip archives can't be read without ") + kFile + ": " + dlerror());
        return reinterpret_cast<Function>(function);
    }
};

struct Closer
{
    void operator()(unzFile archive) const { MiniZip::Get().Close(archive); }
};
using Archive = std::unique_ptr<std::remove_pointer_t<unzFile>, Closer>;

[[noreturn]] void FailZip(const std::string& detail) { Fail({}, "zip archive " + detail); }

bool EndsInXml(std::string_view name)
{
    constexpr std::string_view kEnd = ".xml";
    return name.size() >= kEnd.size() &&
           std::equal(kEnd.begin(), kEnd.end(), name.end() - kEnd.size(), [](char expected, char c) {
               return expected == static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
           });
}

// Makes the entry to be read the current one.
unz_file_info64 SelectEntry(unzFile archive)
{
    const MiniZip& zip = MiniZip::Get();
    char name[512];
    unz_file_info64 info{};
    for (int result = zip.GoToFirstFile(archive); result == UNZ_OK; result = zip.GoToNextFile(archive)) {
        name[0] = 0;
        if (zip.GetCurrentFileInfo64(archive, &info, name, sizeof name - 1, nullptr, 0, nullptr, 0) != UNZ_OK)
            break;
        name[sizeof name - 1] = 0;
        if (EndsInXml(name))
            return info;
    }
    if (zip.GoToFirstFile(archive) != UNZ_OK ||
        zip.GetCurrentFileInfo64(archive, &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK)
        FailZip("holds no file");
    return info;
}

} // namespace

bool IsZip(std::string_view content) noexcept { return content.substr(0, kEntryMark.size()) == kEntryMark; }

std::string Unzip(std::string_view archive)
{
    if (archive.size() > kMaxArchiveBytes)
        FailLimit({}, archive.size(), "bytes of a zip archive", kMaxArchiveBytes);
    // Archives come out of cameras padded with zeros, behind which the end record would not be found.
    const size_t end = archive.find_last_not_of('\0');
    archive = archive.substr(0, end == std::string_view::npos ? 0 : end + 1 + kEndRecordBytes);

    const MiniZip& zip = MiniZip::Get();
    MemoryFile file{archive};
    zlib_filefunc64_def functions{Open, Read, Write, Tell, Seek, Close, Error, &file};
    const Archive opened(zip.Open2_64("", &functions));
    if (!opened)
        FailZip("has no directory, or a damaged one");
    const unz_file_info64 info = SelectEntry(opened.get());
    if (info.uncompressed_size > kMaxContentBytes)
        FailLimit({}, info.uncompressed_size, "bytes in a zip archive", kMaxContentBytes);
    if (info.flag & kEncrypted)
        FailZip("is encrypted");
    if (zip.OpenCurrentFile(opened.get()) != UNZ_OK)
        FailZip("is damaged or packed in an unknown way");
    std::string content;
    int count = 0;
    do {
        const size_t size = content.size();
        content.resize(size + kChunk);
        count = zip.ReadCurrentFile(opened.get(), &content[size], static_cast<unsigned>(kChunk));
        content.resize(size + static_cast<size_t>(std::max(count, 0)));
        if (content.size() > kMaxContentBytes)
            FailLimit({}, content.size(), "bytes in a zip archive", kMaxContentBytes);
    } while (count > 0);
    if (count < 0 || zip.CloseCurrentFile(opened.get()) != UNZ_OK || content.size() != info.uncompressed_size)
        FailZip("is damaged");
    return content;
}

} // namespace KxGenApi
