// SPDX-License-Identifier: Apache-2.0
#include "SequenceWriter.h"

#include "SequenceFormat.h"

#include <KxSDKCommon/KxApi_Exception.h>

#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>
#include <xxhash.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>

using namespace KxApps::SequenceFormat;

namespace KxApps
{

namespace
{

constexpr uint64_t kPushedAtOnce = uint64_t{16} << 20;
constexpr uint8_t kZeros[kAlignment] = {};

template <typename Structure>
void Seal(Structure& structure)
{
    structure.checksum = XXH64(&structure, offsetof(Structure, checksum), 0);
}

std::string Shown(const std::string& path)
{
    constexpr size_t kMax = 120; // a longer path would push the cause out of the message
    return path.size() <= kMax ? path : "..." + path.substr(path.size() - kMax);
}

RecordHeader HeaderOf(const StoredImage& image)
{
    const KxApi::IKxImage& pixels = image.Image();
    const ImageNotes& notes = image.Notes();
    RecordHeader header = {};
    std::copy(std::begin(kRecordMagic), std::end(kRecordMagic), header.magic);
    header.flags = (notes.isIncomplete ? Incomplete : 0U) | (image.IsEncoded() ? Encoded : 0U);
    header.size = image.Size();
    header.imageChecksum = XXH64(image.Data(), image.Size(), 0);
    header.frameId = notes.frameId;
    header.timestampNs = notes.timestampNs;
    header.hostNs = notes.hostNs;
    header.pixelFormat = static_cast<uint32_t>(pixels.GetImagePixelFormat());
    header.width = static_cast<uint32_t>(pixels.GetImageWidth());
    header.height = static_cast<uint32_t>(pixels.GetImageHeight());
    header.linePitch = pixels.GetImageLinePitch();
    Seal(header);
    return header;
}

} // namespace

SequenceWriter::SequenceWriter(std::string path)
    : m_path(std::move(path))
    , m_descriptor(open(m_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666))
{
    if (m_descriptor < 0)
        Raise(errno, "open");
    FileHeader header = {};
    std::copy(std::begin(kFileMagic), std::end(kFileMagic), header.magic);
    header.version = kVersion;
    header.startedNs = static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(
                                                 std::chrono::system_clock::now().time_since_epoch())
                                                 .count());
    Seal(header);
    try {
        Write({{&header, sizeof header}});
    } catch (...) {
        close(m_descriptor);
        throw;
    }
}

SequenceWriter::~SequenceWriter() { close(m_descriptor); }

void SequenceWriter::Raise(int error, const char* function) const
{
    throw KX_LINUX_ERROR_EXCEPTION(error, function, "'%s' can't be written, %s", Shown(m_path).c_str(),
                                   std::strerror(error));
}

void SequenceWriter::Write(const std::vector<Part>& parts)
{
    std::vector<iovec> left;
    uint64_t size = 0;
    for (const Part& part : parts) {
        left.push_back({const_cast<void*>(part.data), part.size});
        size += part.size;
    }
    for (auto first = left.begin(); first != left.end();) {
        ssize_t written = writev(m_descriptor, &*first, static_cast<int>(left.end() - first));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0) {
            const int error = written < 0 ? errno : ENOSPC;
            // What was begun is no image.
            if (ftruncate(m_descriptor, static_cast<off_t>(m_size)) != 0 ||
                lseek(m_descriptor, 0, SEEK_END) < 0)
                Raise(errno, "ftruncate");
            Raise(error, "write");
        }
        for (; first != left.end() && static_cast<size_t>(written) >= first->iov_len; ++first)
            written -= static_cast<ssize_t>(first->iov_len);
        if (first != left.end()) {
            first->iov_base = static_cast<uint8_t*>(first->iov_base) + written;
            first->iov_len -= static_cast<size_t>(written);
        }
    }
    m_size += size;
}

// Without it the system collects seconds of images, and then stops the writer until they are on the disk.
void SequenceWriter::PushOut()
{
    if (m_size - m_pushedOut < kPushedAtOnce)
        return;
    const auto from = static_cast<off_t>(m_pushedOut), length = static_cast<off_t>(m_size - m_pushedOut);
    sync_file_range(m_descriptor, from, length, SYNC_FILE_RANGE_WRITE);
    // What is on the disk by now would push the pages of other programs out of memory.
    posix_fadvise(m_descriptor, 0, from, POSIX_FADV_DONTNEED);
    m_pushedOut = m_size;
}

void SequenceWriter::Add(const StoredImage& image)
{
    const RecordHeader header = HeaderOf(image);
    const uint64_t offset = m_size;
    try {
        Write({{&header, sizeof header},
               {image.Data(), image.Size()},
               {kZeros, Aligned(image.Size()) - image.Size()}});
    } catch (const GenICam::GenericException&) {
        try {
            WriteIndex();
        } catch (const GenICam::GenericException&) { // NOLINT(bugprone-empty-catch): it reads without as well
        }
        throw;
    }
    m_offsets.push_back(offset);
    PushOut();
}

void SequenceWriter::WriteIndex()
{
    IndexHeader index = {};
    std::copy(std::begin(kIndexMagic), std::end(kIndexMagic), index.magic);
    index.count = m_offsets.size();
    const size_t bytes = m_offsets.size() * sizeof m_offsets[0];
    index.offsetsChecksum = XXH64(m_offsets.data(), bytes, 0);
    Seal(index);
    FileEnd end = {};
    end.indexOffset = m_size;
    Seal(end);
    std::copy(std::begin(kEndMagic), std::end(kEndMagic), end.magic);
    Write({{&index, sizeof index}, {m_offsets.data(), bytes}, {&end, sizeof end}});
}

void SequenceWriter::Finish()
{
    WriteIndex();
    // Pipes and the like know no disk.
    if (fdatasync(m_descriptor) != 0 && errno != EINVAL && errno != EROFS)
        Raise(errno, "fdatasync");
}

} // namespace KxApps
