// SPDX-License-Identifier: Apache-2.0
// What all ".kxraw" files have in common; docs/kxraw.md tells the layout.
#pragma once

#include "COutputFile.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

struct XXH64_state_s;

namespace KxApi
{
namespace Detail
{

struct CFileContent;

/// Bytes that a transfer as text would change.
inline constexpr std::string_view kRawMagic{"KXRAW\r\n\x1A", 8};
inline constexpr uint32_t kRawVersion = 1;
inline constexpr size_t kRawHeaderSize = 64;

enum class ERawContent : uint32_t
{
    Image = 1,
    GraphData = 2,
};

/// The part of the header that each kind of content uses as it likes.
using CRawAbout = std::array<uint8_t, 24>;

/// Writes a file: first the header, whose checksums are filled in at the end, then the payload.
class CRawWriter
{
public:
    CRawWriter(COutputFile& file, ERawContent eContent, const CRawAbout& about);
    ~CRawWriter();
    CRawWriter(const CRawWriter&) = delete;
    CRawWriter& operator=(const CRawWriter&) = delete;

    /// Appends to the payload.
    void Add(const void* pData, size_t nSize);
    void AddZeros(size_t nSize);
    /// To be called once, last.
    void Finish();

private:
    COutputFile& m_file;
    const ERawContent m_eContent;
    const CRawAbout m_about;
    uint64_t m_payloadSize = 0;
    XXH64_state_s* m_pState;
};

struct CRawPayload
{
    CRawAbout about;
    const uint8_t* data;
    size_t size;
};

/// The parts of a file. Raises RuntimeException with path and cause when version or content are others, or
/// when anything was changed or is missing.
CRawPayload ReadRawFile(const CFileContent& content, ERawContent eContent);

} // namespace Detail
} // namespace KxApi
