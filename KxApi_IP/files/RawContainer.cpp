// SPDX-License-Identifier: Apache-2.0
#include "RawContainer.h"

#include "Decoding.h"
#include "LittleEndian.h"

#include <xxhash.h>

#include <algorithm>
#include <new>

namespace KxApi
{
namespace Detail
{
namespace
{

// Places in the header.
constexpr size_t kVersionAt = 8;
constexpr size_t kContentAt = 12;
constexpr size_t kPayloadSizeAt = 16;
constexpr size_t kPayloadHashAt = 24;
constexpr size_t kAboutAt = 32;
constexpr size_t kHeaderHashAt = 56;

static_assert(kAboutAt + std::tuple_size_v<CRawAbout> == kHeaderHashAt);

using CHeader = std::array<uint8_t, kRawHeaderSize>;

constexpr std::array<uint8_t, 4096> kZeros{};

} // namespace

CRawWriter::CRawWriter(COutputFile& file, ERawContent eContent, const CRawAbout& about)
    : m_file(file)
    , m_eContent(eContent)
    , m_about(about)
    , m_pState(XXH64_createState())
{
    if (!m_pState)
        throw std::bad_alloc();
    XXH64_reset(m_pState, 0);
    m_file.Write(kZeros.data(), kRawHeaderSize);
}

CRawWriter::~CRawWriter() { XXH64_freeState(m_pState); }

void CRawWriter::Add(const void* pData, size_t nSize)
{
    if (nSize == 0)
        return;
    XXH64_update(m_pState, pData, nSize);
    m_file.Write(pData, nSize);
    m_payloadSize += nSize;
}

void CRawWriter::AddZeros(size_t nSize)
{
    for (; nSize > 0; nSize -= std::min(nSize, kZeros.size()))
        Add(kZeros.data(), std::min(nSize, kZeros.size()));
}

void CRawWriter::Finish()
{
    CHeader header{};
    std::copy(kRawMagic.begin(), kRawMagic.end(), header.begin());
    PutLittle<uint32_t>(&header[kVersionAt], kRawVersion);
    PutLittle<uint32_t>(&header[kContentAt], static_cast<uint32_t>(m_eContent));
    PutLittle<uint64_t>(&header[kPayloadSizeAt], m_payloadSize);
    PutLittle<uint64_t>(&header[kPayloadHashAt], XXH64_digest(m_pState));
    std::copy(m_about.begin(), m_about.end(), &header[kAboutAt]);
    PutLittle<uint64_t>(&header[kHeaderHashAt], XXH64(header.data(), kHeaderHashAt, 0));
    m_file.Seek(0);
    m_file.Write(header.data(), header.size());
}

CRawPayload ReadRawFile(const CFileContent& content, ERawContent eContent)
{
    const uint8_t* const header = content.data;
    if (content.size < kRawHeaderSize)
        content.Raise("its %zu bytes are fewer than the header's %zu", content.size, kRawHeaderSize);
    if (!std::equal(kRawMagic.begin(), kRawMagic.end(), header))
        content.Raise("it is no kxraw file");
    const uint32_t version = GetLittle<uint32_t>(header + kVersionAt);
    if (version != kRawVersion)
        content.Raise("its version is %u, known is %u", version, kRawVersion);
    if (GetLittle<uint64_t>(header + kHeaderHashAt) != XXH64(header, kHeaderHashAt, 0))
        content.Raise("its header is damaged (checksum)");
    const uint32_t found = GetLittle<uint32_t>(header + kContentAt);
    if (found != static_cast<uint32_t>(eContent))
        content.Raise(eContent == ERawContent::Image ? "it holds no image (content %u)"
                                                     : "it holds no graph data (content %u)",
                      found);
    const uint64_t size = GetLittle<uint64_t>(header + kPayloadSizeAt);
    if (size != content.size - kRawHeaderSize)
        content.Raise("%llu bytes should follow the header, but %zu do",
                      static_cast<unsigned long long>(size), content.size - kRawHeaderSize);
    CRawPayload payload{{}, header + kRawHeaderSize, size};
    if (GetLittle<uint64_t>(header + kPayloadHashAt) != XXH64(payload.data, size, 0))
        content.Raise("its data are damaged (checksum)");
    std::copy_n(header + kAboutAt, payload.about.size(), payload.about.begin());
    return payload;
}

} // namespace Detail
} // namespace KxApi
