// SPDX-License-Identifier: Apache-2.0

#include "COutputFile.h"
#include "Decoding.h"
#include "FileErrors.h"
#include "GraphLines.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCCheckRange.h>
#include <Base/GCException.h>
#include <KxApi_TL/IKxAllocator.h>
#include <KxApi_TL/KxApi_TL.h>
#include <KxSDKCommon/KxMutex.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>

namespace KxApi
{
namespace
{

using namespace Detail;

constexpr uint64_t kMaxFileSize = uint64_t{1} << 30;

void CheckSound(const CKxGraphDataDescription& description)
{
    if (!IsSound(description))
        throw INVALID_ARGUMENT_EXCEPTION("Graph data of kind %d can't have the divisor %u",
                                         static_cast<int>(description.eKind), description.nDivisor);
}

/// Values in memory of an allocator. It grows with its needs, as image buffers do.
class CValueMemory
{
public:
    explicit CValueMemory(IKxAllocator* pAllocator) noexcept
        : m_pAllocator(pAllocator)
    {}
    CValueMemory(const CValueMemory&) = delete;
    CValueMemory& operator=(const CValueMemory&) = delete;
    ~CValueMemory() { Free(); }

    uint32_t* Get() const { return static_cast<uint32_t*>(m_pBuffer); }

    /// Makes room, without keeping what the memory held.
    void Reserve(size_t nLength)
    {
        constexpr size_t kMaxLength = std::numeric_limits<size_t>::max() / sizeof(uint32_t);
        if (nLength <= m_nSize / sizeof(uint32_t))
            return;
        Free();
        const size_t nSize = nLength * sizeof(uint32_t);
        if (nLength <= kMaxLength)
            Allocate(nSize);
        if (!m_pBuffer)
            throw BAD_ALLOC_EXCEPTION("No memory for graph data of %zu values", nLength);
        m_nSize = nSize;
    }

private:
    void Allocate(size_t nSize)
    {
        if (m_pAllocator)
            m_pAllocator->Allocate(&m_pBuffer, nSize, &m_pContext);
        else
            m_pBuffer = ::operator new(nSize, std::nothrow);
    }
    void Free()
    {
        if (m_pBuffer && m_pAllocator)
            m_pAllocator->Deallocate(m_pBuffer, m_nSize, m_pContext);
        else
            ::operator delete(m_pBuffer);
        m_pBuffer = nullptr;
        m_nSize = 0;
    }

    IKxAllocator* const m_pAllocator;
    void* m_pBuffer = nullptr;
    void* m_pContext = nullptr;
    size_t m_nSize = 0; // bytes
};

class CItem final : public IKxGraphDataBuffer, public IKxGraphData
{
public:
    explicit CItem(IKxAllocator* pAllocator) noexcept
        : m_objMemory(pAllocator)
    {}
    virtual ~CItem() = default;

    /// The values, for the caller to fill.
    uint32_t* SetSize(const CKxGraphDataDescription& description, size_t nLength)
    {
        m_objMemory.Reserve(nLength);
        m_objDescription = description;
        m_nLength = nLength;
        return nLength > 0 ? m_objMemory.Get() : nullptr;
    }
    const CKxGraphDataDescription& GetDescription() const { return m_objDescription; }

    IKxGraphData* GetGraphData() const override { return const_cast<CItem*>(this); }

    EKxGraphDataKind_t GetKind() const override { return m_objDescription.eKind; }
    size_t GetLength() const override { return m_nLength; }
    const uint32_t* GetValues() const override { return m_nLength > 0 ? m_objMemory.Get() : nullptr; }
    int64_t GetProperty(EKxGraphDataProperty_t eProperty) const override;

private:
    CKxGraphDataDescription m_objDescription;
    CValueMemory m_objMemory;
    size_t m_nLength = 0;
};

int64_t CItem::GetProperty(EKxGraphDataProperty_t eProperty) const
{
    switch (eProperty) {
    case KxGraphDataProperty_Component:
        if (m_objDescription.eComponent == KxPixelComponentType_None)
            throw INVALID_ARGUMENT_EXCEPTION("The graph data have no pixel component");
        return m_objDescription.eComponent;
    case KxGraphDataProperty_FullScale:
        return m_objDescription.nFullScale;
    case KxGraphDataProperty_Max: {
        const uint32_t* const pValues = m_objMemory.Get();
        return m_nLength > 0 ? *std::max_element(pValues, pValues + m_nLength) : 0;
    }
    case KxGraphDataProperty_Divisor:
        return m_objDescription.nDivisor;
    }
    throw INVALID_ARGUMENT_EXCEPTION("Graph data have no property %d", static_cast<int>(eProperty));
}

/// The description of an item of any list.
CKxGraphDataDescription DescriptionOf(const IKxGraphData& data)
{
    constexpr int64_t kMax = std::numeric_limits<uint32_t>::max();
    CKxGraphDataDescription description;
    description.eKind = data.GetKind();
    try {
        description.eComponent =
            static_cast<EKxPixelComponentType_t>(data.GetProperty(KxGraphDataProperty_Component));
    } catch (const GenICam::GenericException&) {
        description.eComponent = KxPixelComponentType_None;
    }
    description.nFullScale =
        static_cast<uint32_t>(std::clamp<int64_t>(data.GetProperty(KxGraphDataProperty_FullScale), 0, kMax));
    if (IsDivided(description.eKind))
        description.nDivisor = static_cast<uint32_t>(
            std::clamp<int64_t>(data.GetProperty(KxGraphDataProperty_Divisor), 0, kMax));
    CheckSound(description);
    return description;
}

class CKxGraphDataBufferList final : public IKxGraphDataBufferListResizable
{
public:
    explicit CKxGraphDataBufferList(IKxAllocator* pAllocator) noexcept
        : m_pAllocator(pAllocator)
    {}
    CKxGraphDataBufferList(const CKxGraphDataBufferList&) = delete;
    CKxGraphDataBufferList& operator=(const CKxGraphDataBufferList&) = delete;
    virtual ~CKxGraphDataBufferList()
    {
        m_vecItems.clear(); // before the allocator is told that it isn't needed any more
        if (m_pAllocator)
            m_pAllocator->OnDeregister();
    }

    size_t GetCount() const override { return m_nCount; }
    IKxGraphDataBuffer* GetItem(size_t nIndex) const override;
    void SaveToFile(EKxGraphDataFileType_t eFileType, const GenICam::gcstring& strPath) const override;
    void CopyFrom(const IKxGraphDataBufferList* pList) override;

    void Clear() override { m_nCount = 0; }
    uint32_t* Append(const CKxGraphDataDescription& objDescription, size_t nLength) override;
    void LoadFromFile(const GenICam::gcstring& strPath) override;

    void Release() override { delete this; }

private:
    uint32_t* AppendUninitialized(const CKxGraphDataDescription& description, size_t nLength);
    CGraphLines GetLines() const;

    IKxAllocator* const m_pAllocator;
    mutable CKxMutex m_lock; // between CopyFrom and SaveToFile; nothing else is taken under it
    std::vector<std::unique_ptr<CItem>> m_vecItems; // those from m_nCount on wait to be used again
    size_t m_nCount = 0;
};

IKxGraphDataBuffer* CKxGraphDataBufferList::GetItem(size_t nIndex) const
{
    KXGC_CHECK_RANGE(rlBelowMax, "nIndex", nIndex, m_nCount);
    return m_vecItems[nIndex].get();
}

uint32_t* CKxGraphDataBufferList::AppendUninitialized(const CKxGraphDataDescription& description,
                                                      size_t nLength)
{
    if (m_nCount == m_vecItems.size())
        m_vecItems.push_back(std::make_unique<CItem>(m_pAllocator));
    uint32_t* const pValues = m_vecItems[m_nCount]->SetSize(description, nLength);
    ++m_nCount;
    return pValues;
}

uint32_t* CKxGraphDataBufferList::Append(const CKxGraphDataDescription& objDescription, size_t nLength)
{
    CheckSound(objDescription);
    return GenICam::GuardBadAlloc([&] {
        uint32_t* const pValues = AppendUninitialized(objDescription, nLength);
        std::fill_n(pValues, nLength, 0);
        return pValues;
    });
}

void CKxGraphDataBufferList::CopyFrom(const IKxGraphDataBufferList* pList)
{
    if (!pList)
        throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
    if (pList == this)
        return;
    const CKxMutexLock lock(m_lock);
    m_nCount = 0;
    GenICam::GuardBadAlloc([&] {
        const size_t nCount = pList->GetCount();
        for (size_t i = 0; i < nCount; ++i) {
            const IKxGraphData& data = *pList->GetItem(i)->GetGraphData();
            const size_t nLength = data.GetLength();
            uint32_t* const pValues = AppendUninitialized(DescriptionOf(data), nLength);
            if (nLength > 0)
                std::memcpy(pValues, data.GetValues(), nLength * sizeof(uint32_t));
        }
    });
}

CGraphLines CKxGraphDataBufferList::GetLines() const
{
    const CKxMutexLock lock(m_lock);
    CGraphLines lines(m_nCount);
    for (size_t i = 0; i < m_nCount; ++i) {
        const CItem& item = *m_vecItems[i];
        lines[i].description = item.GetDescription();
        if (item.GetLength() > 0)
            lines[i].values.assign(item.GetValues(), item.GetValues() + item.GetLength());
    }
    return lines;
}

void CKxGraphDataBufferList::SaveToFile(EKxGraphDataFileType_t eFileType,
                                        const GenICam::gcstring& strPath) const
{
    if (eFileType != KxGraphDataFileType_Raw && eFileType != KxGraphDataFileType_Csv)
        throw INVALID_ARGUMENT_EXCEPTION("Cannot write '%s': %d is no type of graph data files",
                                         ShownPath({strPath.c_str(), strPath.size()}).c_str(),
                                         static_cast<int>(eFileType));
    GenICam::GuardBadAlloc([&] {
        // The file may take long, and who registers new data must not wait for it.
        const CGraphLines lines = GetLines();
        COutputFile file(strPath);
        if (eFileType == KxGraphDataFileType_Raw)
            WriteRawGraph(lines, file);
        else
            WriteCsvGraph(lines, file);
        file.Commit();
    });
}

void CKxGraphDataBufferList::LoadFromFile(const GenICam::gcstring& strPath)
{
    GenICam::GuardBadAlloc([&] {
        const CBytes bytes = ReadFile(strPath, kMaxFileSize);
        const CGraphLines lines = ReadGraphFile(
            {bytes.data.get(), bytes.size, kMaxFileSize, ShownPath({strPath.c_str(), strPath.size()})});
        m_nCount = 0;
        for (const CGraphLine& line : lines)
            std::copy(line.values.begin(), line.values.end(),
                      AppendUninitialized(line.description, line.values.size()));
    });
}

} // namespace

IKxGraphDataBufferListResizable* CreateIKxGraphDataBufferListResizable(IKxAllocator* pAllocator)
{
    CheckKxApiInitialized();
    return GenICam::GuardBadAlloc([=] { return new CKxGraphDataBufferList(pAllocator); });
}

} // namespace KxApi
