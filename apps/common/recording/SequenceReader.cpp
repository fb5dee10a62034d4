// SPDX-License-Identifier: Apache-2.0
#include "SequenceReader.h"

#include "SequenceFormat.h"

#include <KxApi_IP/IKxStillImageFiler.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>
#include <KxApi_TL/KxApi_TL.h>
#include <KxSDKCommon/KxApi_Exception.h>
#include <KxSDKCommon/KxImageBuffer.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xxhash.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>

using namespace KxApi;
using namespace KxApps::SequenceFormat;

namespace KxApps
{

namespace
{

template <typename Structure>
bool IsSealed(const Structure& structure)
{
    return structure.checksum == XXH64(&structure, offsetof(Structure, checksum), 0);
}

template <size_t N>
bool Begins(const char (&magic)[N], const char (&expected)[N])
{
    return std::equal(std::begin(magic), std::end(magic), std::begin(expected));
}

class File
{
public:
    explicit File(const std::string& path)
        : m_descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
    {
        struct stat status = {};
        if (m_descriptor < 0 || fstat(m_descriptor, &status) != 0) {
            const int error = errno;
            throw KX_LINUX_ERROR_EXCEPTION(error, "open", "'%s' can't be read, %s", path.c_str(),
                                           std::strerror(error));
        }
        m_size = static_cast<uint64_t>(status.st_size);
    }
    ~File()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    size_t Read(uint64_t offset, void* data, size_t size) const
    {
        size_t done = 0;
        while (done < size) {
            const ssize_t count = pread(m_descriptor, static_cast<uint8_t*>(data) + done, size - done,
                                        static_cast<off_t>(offset + done));
            if (count < 0 && errno == EINTR)
                continue;
            if (count <= 0)
                break;
            done += static_cast<size_t>(count);
        }
        return done;
    }
    uint64_t Size() const { return m_size; }

private:
    int m_descriptor;
    uint64_t m_size = 0;
};

} // namespace

struct SequenceReader::Header : RecordHeader
{
    const IKxPixelFormatInfoInside* Info() const
    {
        return dynamic_cast<const IKxPixelFormatInfoInside*>(
            GetIKxPixelFormatInfo(static_cast<EKxPixelFormatNamingConvention_t>(pixelFormat)));
    }
    /// Whether the size of the image follows from the rest; figures of damaged files can be any.
    bool FitsItself() const
    {
        if (flags & Encoded)
            return pixelFormat == KxPixelFormat_Mono8 && height == 1 && size == width && size > 0;
        const IKxPixelFormatInfoInside* const pInfo = Info();
        if (!pInfo || width == 0 || height == 0)
            return false;
        try {
            return linePitch >= pInfo->GetLinePitch(width, 1) &&
                   pInfo->GetImageSize(height, linePitch) == size;
        } catch (const GenICam::GenericException&) {
            return false;
        }
    }
};

bool SequenceReader::IsSequence(const std::string& path)
{
    char magic[sizeof kFileMagic] = {};
    std::FILE* const file = std::fopen(path.c_str(), "rbe");
    if (!file)
        return false;
    const bool isRead = std::fread(magic, sizeof magic, 1, file) == 1;
    std::fclose(file);
    return isRead && Begins(magic, kFileMagic);
}

SequenceReader::SequenceReader(const std::string& path)
    : m_size(0)
    , m_name(path)
{
    const auto file = std::make_shared<File>(path);
    m_size = file->Size();
    m_source = [file](uint64_t offset, void* data, size_t size) { return file->Read(offset, data, size); };
    Open();
}

SequenceReader::SequenceReader(Source source, uint64_t size, std::string name)
    : m_source(std::move(source))
    , m_size(size)
    , m_name(std::move(name))
{
    Open();
}

void SequenceReader::Raise(const char* format, ...) const
{
    char cause[128];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(cause, sizeof cause, format, arguments);
    va_end(arguments);
    const size_t from =
        m_name.size() - std::min<size_t>(m_name.size(), 100); // the cause has to fit behind it
    throw RUNTIME_EXCEPTION("'%s' can't be read, %s", m_name.substr(from).c_str(), cause);
}

void SequenceReader::Open()
{
    FileHeader header = {};
    if (m_source(0, &header, sizeof header) != sizeof header || !Begins(header.magic, kFileMagic))
        Raise("it is no kxseq file");
    if (header.version != kVersion)
        Raise("its version is %u, known is %u", header.version, kVersion);
    if (!IsSealed(header))
        Raise("its header is damaged (checksum)");
    m_isComplete = ReadIndex();
    if (!m_isComplete)
        FindRecords();
}

bool SequenceReader::ReadIndex()
{
    FileEnd end = {};
    IndexHeader index = {};
    constexpr uint64_t kLeast = sizeof(FileHeader) + sizeof index + sizeof end;
    if (m_size < kLeast || m_source(m_size - sizeof end, &end, sizeof end) != sizeof end ||
        !Begins(end.magic, kEndMagic) || !IsSealed(end) || end.indexOffset < sizeof(FileHeader) ||
        end.indexOffset > m_size - sizeof end - sizeof index)
        return false;
    if (m_source(end.indexOffset, &index, sizeof index) != sizeof index ||
        !Begins(index.magic, kIndexMagic) || !IsSealed(index))
        return false;
    const uint64_t bytes = m_size - sizeof end - sizeof index - end.indexOffset;
    if (bytes % sizeof(uint64_t) != 0 || index.count != bytes / sizeof(uint64_t))
        return false;
    std::vector<uint64_t> offsets(index.count);
    if (m_source(end.indexOffset + sizeof index, offsets.data(), bytes) != bytes ||
        XXH64(offsets.data(), bytes, 0) != index.offsetsChecksum)
        return false;
    m_offsets = std::move(offsets);
    return true;
}

void SequenceReader::FindRecords()
{
    Header header = {};
    for (uint64_t offset = sizeof(FileHeader); ReadHeader(offset, header);
         offset += sizeof(RecordHeader) + Aligned(header.size))
        m_offsets.push_back(offset);
}

bool SequenceReader::ReadHeader(uint64_t offset, Header& header) const
{
    if (offset > m_size || m_size - offset < sizeof(RecordHeader))
        return false;
    const uint64_t room = m_size - offset - sizeof(RecordHeader);
    return m_source(offset, static_cast<RecordHeader*>(&header), sizeof(RecordHeader)) ==
               sizeof(RecordHeader) &&
           Begins(header.magic, kRecordMagic) && IsSealed(header) && header.size <= room &&
           header.FitsItself();
}

SequenceReader::Header SequenceReader::CheckedHeader(size_t index) const
{
    if (index >= Count())
        throw OUT_OF_RANGE_EXCEPTION("size_t index = %zu must be smaller than Max = %zu", index, Count());
    Header header = {};
    if (!ReadHeader(m_offsets[index], header))
        Raise("the header of its image %zu is damaged", index);
    return header;
}

SequenceReader::Entry SequenceReader::About(size_t index) const
{
    const Header header = CheckedHeader(index);
    Entry entry;
    entry.notes = {header.frameId, header.timestampNs, header.hostNs, (header.flags & Incomplete) != 0};
    entry.isEncoded = (header.flags & Encoded) != 0;
    entry.pixelFormat = static_cast<EKxPixelFormatNamingConvention_t>(header.pixelFormat);
    entry.width = header.width;
    entry.height = header.height;
    return entry;
}

void SequenceReader::Read(size_t index, IKxImageBuffer& buffer) const
{
    const Header header = CheckedHeader(index);
    if (header.size > m_maxImageSize)
        Raise("the %llu bytes of its image %zu are more than the limit of %llu",
              static_cast<unsigned long long>(header.size), index,
              static_cast<unsigned long long>(m_maxImageSize));
    const CKxAutoPtr<IKxImageBufferReleasable, IKxImageBuffer> encoded(
        header.flags & Encoded ? CreateIKxImageBuffer(nullptr) : nullptr);
    IKxImageBuffer& target = encoded ? *encoded : buffer;
    dynamic_cast<CKxImageBuffer&>(target).SetSizeWithLinePitch(
        header.width, header.height, static_cast<EKxPixelFormatNamingConvention_t>(header.pixelFormat),
        header.linePitch);
    void* const data = target.GetIKxImage()->GetImageBuffer();
    if (m_source(m_offsets[index] + sizeof(RecordHeader), data, header.size) != header.size ||
        XXH64(data, header.size, 0) != header.imageChecksum)
        Raise("its image %zu is damaged (checksum)", index);
    if (encoded) {
        const CKxAutoPtr<IKxFilerReleasable> filer(CreateIKxFiler(KxFilerType_StillImage));
        filer->SetMaxLoadSize(m_maxImageSize);
        filer->LoadFromMemory(&buffer, data, header.size);
    }
}

} // namespace KxApps
