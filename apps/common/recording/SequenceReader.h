// SPDX-License-Identifier: Apache-2.0
// Reading of ".kxseq" files, also of those that were cut off.
#pragma once

#include "StoredImage.h"

#include <functional>
#include <string>
#include <vector>

namespace KxApps
{

/// One thread at a time.
class SequenceReader
{
public:
    /// Gives up to `size` bytes at an offset; fewer where the file ends.
    using Source = std::function<size_t(uint64_t offset, void* data, size_t size)>;

    struct Entry
    {
        ImageNotes notes;
        KxApi::EKxPixelFormatNamingConvention_t pixelFormat = KxApi::KxPixelFormat_None;
        size_t width = 0;
        size_t height = 0;
        bool isEncoded = false; ///< the bytes are a JPEG file, of which format and size aren't known
    };

    /// Whether a file begins like one.
    static bool IsSequence(const std::string& path);

    /// Finds the images, by the index or, where that is missing or damaged, one after the other. Raises
    /// CKxLinuxErrorException when the file can't be read, RuntimeException when it isn't such a file.
    explicit SequenceReader(const std::string& path);
    /// The same of bytes that lie elsewhere.
    /// @param name for messages
    SequenceReader(Source source, uint64_t size, std::string name);

    size_t Count() const { return m_offsets.size(); }
    /// Whether the file was finished. If not, all that came whole is there.
    bool IsComplete() const { return m_isComplete; }

    /// Raises OutOfRangeException from Count on, RuntimeException when its header is damaged.
    Entry About(size_t index) const;
    /// Reads an image into the buffer, an encoded one after decoding it. Raises like About, and
    /// RuntimeException when the image is damaged or takes more than the limit; then the buffer's content is
    /// of no use.
    void Read(size_t index, KxApi::IKxImageBuffer& buffer) const;

    /// Bytes that an image may take in memory, 4 GiB at first.
    void SetMaxImageSize(uint64_t bytes) { m_maxImageSize = bytes; }

private:
    struct Header;

    void Open();
    bool ReadIndex();
    void FindRecords();
    bool ReadHeader(uint64_t offset, Header& header) const;
    Header CheckedHeader(size_t index) const;
    [[noreturn]] void Raise(const char* format, ...) const __attribute__((format(printf, 2, 3)));

    Source m_source;
    uint64_t m_size;
    const std::string m_name;
    uint64_t m_maxImageSize = uint64_t{4} << 30;
    bool m_isComplete = false;
    std::vector<uint64_t> m_offsets;
};

} // namespace KxApps
