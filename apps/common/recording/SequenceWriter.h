// SPDX-License-Identifier: Apache-2.0
// Writing of ".kxseq" files: many images in one file, as they are.
#pragma once

#include "StoredImage.h"

#include <string>
#include <vector>

namespace KxApps
{

/// The file is there under its name from the start, and readable up to the last whole image whatever
/// happens. One thread.
class SequenceWriter
{
public:
    static constexpr const char* kEnding = ".kxseq";

    /// Makes the file, in place of one of that name. Raises CKxLinuxErrorException with path and cause.
    explicit SequenceWriter(std::string path);
    /// Without Finish the file has no index.
    ~SequenceWriter();
    SequenceWriter(const SequenceWriter&) = delete;
    SequenceWriter& operator=(const SequenceWriter&) = delete;

    /// Appends an image. Raises CKxLinuxErrorException with path and cause, such as a full disk; then the
    /// file ends behind the image before, with an index where there is room for it.
    void Add(const StoredImage& image);
    /// Writes the index and waits until all is on the disk. Raises like Add.
    void Finish();

    const std::string& Path() const { return m_path; }
    uint64_t Size() const { return m_size; }

private:
    struct Part
    {
        const void* data;
        size_t size;
    };

    void Write(const std::vector<Part>& parts);
    void WriteIndex();
    void PushOut();
    [[noreturn]] void Raise(int error, const char* function) const;

    const std::string m_path;
    int m_descriptor = -1;
    uint64_t m_size = 0;      // of what is whole
    uint64_t m_pushedOut = 0; // what the system was asked to write to the disk
    std::vector<uint64_t> m_offsets;
};

} // namespace KxApps
