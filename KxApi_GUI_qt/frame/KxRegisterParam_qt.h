// SPDX-License-Identifier: Apache-2.0
// Registers: what lies behind the addresses of a window's port.
//
// A register is a member of its client and carries its row; to set a value through it checks, stores, shows
// and invalidates as the row says. A client has, not necessarily public:
//   static const char* SourceFile();                        place told by exceptions
//   void InvalidateNode(const GenICam::gcstring&);
//   void OnSettingChanged(uint32_t nUpdate, bool bByCall);  shows; bByCall: by a setter and not by the port
//   CKxRegister& Registers();                               where its registers enter themselves, if it has
//   it
#pragma once

#include "frame/RegisterRow_qt.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>
#include <Base/GCString.h>
#include <KxSDKCommon/KxAssert.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <string>
#include <type_traits>
#include <utility>

namespace KxApi
{

/// A register. Its owner is the client; maps only refer to it.
struct IKxRegisterParam
{
    virtual int64_t GetAddress() const = 0;
    /// Bytes.
    virtual int64_t GetLength() const = 0;
    /// Read raises AccessException when the register may not be read, OutOfRangeException for a buffer
    /// shorter than the register, where that has to come in one piece; Write the same.
    virtual void Read(void* pBuffer, int64_t nAddress, int64_t nLength) = 0;
    virtual void Write(const void* pBuffer, int64_t nAddress, int64_t nLength) = 0;

    virtual ~IKxRegisterParam() = default;

    /// Whether an address between GetAddress and its end is served.
    virtual bool Covers(int64_t) const { return true; }
    /// Whether writes are served.
    virtual bool TakesWrites() const { return true; }
    /// Bytes that one access serves, 0 for all up to the register's end.
    virtual int64_t GetStep() const { return 0; }
};

namespace Detail
{
template <class Client, class = void>
inline constexpr bool kEntersItself = false;
template <class Client>
inline constexpr bool kEntersItself<Client, std::void_t<decltype(std::declval<Client&>().Registers())>> =
    true;
} // namespace Detail

/// What registers have in common. `MethodW`, a `void (Client::*)()`, runs when the value has changed, unless
/// null, and then what the row says. Any thread, as far as the client's methods are.
template <class Client, class MethodW>
class CRegisterParamBase : public IKxRegisterParam
{
public:
    CRegisterParamBase(Client* pClient, const CRegisterRow& row, int64_t nLength, MethodW pMethodW)
        : m_pClient(pClient)
        , m_row(row)
        , m_nLength(nLength)
        , m_pMethodW(pMethodW)
    {
        if constexpr (Detail::kEntersItself<Client>)
            pClient->Registers().Register(*this);
    }
    CRegisterParamBase(const CRegisterParamBase&) = delete;
    CRegisterParamBase& operator=(const CRegisterParamBase&) = delete;

    int64_t GetAddress() const override { return m_row.nAddress; }
    int64_t GetLength() const override { return m_nLength; }
    bool Covers(int64_t nAddress) const override
    {
        return !m_row.Has(KxRegister_Exact) || nAddress == m_row.nAddress;
    }
    bool TakesWrites() const override { return !m_row.Has(KxRegister_WritesDropped); }

    /// What a write does after it has stored the value.
    void CallbackW() { Show(false); }

protected:
    /// For calls by pointer to member: given the member itself, g++ 12's undefined-behaviour sanitizer checks
    /// the address of something else.
    Client* TheClient() const { return m_pClient; }

    template <class E>
    static GenICam::ExceptionReporter<E> Reporter(int nLine, const char* szType)
    {
        return GenICam::ExceptionReporter<E>(Client::SourceFile(), nLine, szType);
    }

    void CheckReadable() const
    {
        if (!GenApi::IsReadable(m_row.eAccessMode))
            throw Reporter<GenICam::AccessException>(__LINE__, "AccessException")
                .Report("Node is not readable.");
    }
    void CheckWritable() const
    {
        if (!GenApi::IsWritable(m_row.eAccessMode))
            throw Reporter<GenICam::AccessException>(__LINE__, "AccessException")
                .Report("Node is not writable.");
    }
    static void CheckLength(int64_t nLength, int64_t nNeeded)
    {
        GenICam::Detail::CheckRange(GenICam::rlFromMin, "Length", nLength, nNeeded, Client::SourceFile(),
                                    __LINE__);
    }
    void CheckStart(int64_t nAddress) const
    {
        KX_ASSERT(m_row.nAddress == nAddress, "this->m_nAddress == nAddress");
    }
    void CheckInside(int64_t nAddress) const
    {
        KX_ASSERT(m_row.nAddress <= nAddress, "this->m_nAddress <= nAddress");
        KX_ASSERT(nAddress < m_row.nAddress + m_nLength, "nAddress < this->m_nAddress + this->m_nLength");
    }

    void Show(bool bByCall)
    {
        if (bByCall && m_row.Has(KxRegister_WritesShow))
            return;
        if (m_pMethodW)
            (TheClient()->*m_pMethodW)();
        if (m_row.nUpdate != 0)
            m_pClient->OnSettingChanged(m_row.nUpdate, bByCall);
    }
    void Invalidate()
    {
        if (m_row.szNode)
            m_pClient->InvalidateNode(m_row.szNode);
    }
    /// Tells of a stored value.
    void Tell(bool bInvalidate)
    {
        const bool bFirst = m_row.Has(KxRegister_InvalidatesFirst);
        if (bInvalidate && bFirst)
            Invalidate();
        Show(bInvalidate);
        if (bInvalidate && !bFirst)
            Invalidate();
    }

    Client* const m_pClient;
    const CRegisterRow m_row;
    const int64_t m_nLength;

private:
    const MethodW m_pMethodW;
};

/// A register of one number, of type `CODE_TYPE` here and of type `XML_TYPE` on the wire, which `Derived`
/// gets and sets.
template <class Derived, class Client, class MethodW, class CODE_TYPE, class XML_TYPE>
class CRegisterParamOfNumber : public CRegisterParamBase<Client, MethodW>
{
    using Base = CRegisterParamBase<Client, MethodW>;

public:
    CRegisterParamOfNumber(Client* pClient, const CRegisterRow& row, const CRangeOf<CODE_TYPE>& range,
                           MethodW pMethodW)
        : Base(pClient, row, sizeof(XML_TYPE), pMethodW)
        , m_range(range)
    {}

    /// What the application's call does.
    void Set(CODE_TYPE value) { mSet(value, true); }

    /// @param bInvalidate false for a change that comes through the node map and must not run back into it.
    /// Raises OutOfRangeException, and nothing has changed.
    void mSet(CODE_TYPE value, bool bInvalidate)
    {
        auto& self = static_cast<Derived&>(*this);
        if (this->m_row.Has(KxRegister_PresentPasses) && self.IsPresent(value))
            return;
        m_range.Check(value, Client::SourceFile(), __LINE__);
        if (self.Store(value) || this->m_row.Has(KxRegister_AlwaysTold))
            this->Tell(bInvalidate);
    }

    void Read(void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckReadable();
        this->CheckStart(nAddress);
        this->CheckLength(nLength, this->m_nLength);
        const auto value = static_cast<XML_TYPE>(static_cast<Derived&>(*this).Load());
        std::memcpy(pBuffer, &value, sizeof(value));
    }
    void Write(const void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckStart(nAddress);
        if (!this->TakesWrites())
            return this->CheckLength(nLength, this->m_nLength);
        this->CheckWritable();
        this->CheckLength(nLength, this->m_nLength);
        XML_TYPE wire;
        std::memcpy(&wire, pBuffer, sizeof(wire));
        const auto value = static_cast<CODE_TYPE>(wire);
        if (this->m_row.Has(KxRegister_WritesSet))
            return mSet(value, false);
        static_cast<Derived&>(*this).Store(value);
        this->Show(false);
    }

private:
    const CRangeOf<CODE_TYPE> m_range;
};

/// A number that the register keeps.
template <class Client, class MethodW, class CODE_TYPE, class XML_TYPE = CWireType<CODE_TYPE>>
class CRegisterParamNumeric final
    : public CRegisterParamOfNumber<CRegisterParamNumeric<Client, MethodW, CODE_TYPE, XML_TYPE>, Client,
                                    MethodW, CODE_TYPE, XML_TYPE>
{
    using Base = CRegisterParamOfNumber<CRegisterParamNumeric, Client, MethodW, CODE_TYPE, XML_TYPE>;
    friend Base;

public:
    CRegisterParamNumeric(Client* pClient, const CRegisterRow& row, CODE_TYPE value,
                          const CRangeOf<CODE_TYPE>& range = {}, MethodW pMethodW = nullptr)
        : Base(pClient, row, range, pMethodW)
        , m_Value(value)
    {}

    CODE_TYPE GetValue() const { return m_Value; }
    // Not explicit: the register stands for the value in expressions.
    operator CODE_TYPE() const { return m_Value; }
    /// Stores the value and does nothing else.
    void SetValue(CODE_TYPE value) { m_Value = value; }

private:
    CODE_TYPE Load() const { return m_Value; }
    bool IsPresent(CODE_TYPE value) const { return m_Value == value; }
    bool Store(CODE_TYPE value) { return m_Value.exchange(value) != value; }

    std::atomic<CODE_TYPE> m_Value;
};

/// A number that the client keeps; its method to set it may raise. Without one the register can only be read.
template <class Client, class MethodW, class CODE_TYPE, class XML_TYPE = CWireType<CODE_TYPE>>
class CRegisterParamNumericMethod final
    : public CRegisterParamOfNumber<CRegisterParamNumericMethod<Client, MethodW, CODE_TYPE, XML_TYPE>, Client,
                                    MethodW, CODE_TYPE, XML_TYPE>
{
    using Base = CRegisterParamOfNumber<CRegisterParamNumericMethod, Client, MethodW, CODE_TYPE, XML_TYPE>;
    friend Base;

public:
    using MethodOnSet = void (Client::*)(CODE_TYPE);
    using MethodOnGet = CODE_TYPE (Client::*)() const;

    CRegisterParamNumericMethod(Client* pClient, const CRegisterRow& row, MethodOnSet pMethodOnSet,
                                MethodOnGet pMethodOnGet, const CRangeOf<CODE_TYPE>& range = {},
                                MethodW pMethodW = nullptr)
        : Base(pClient, row, range, pMethodW)
        , m_pMethodOnSet(pMethodOnSet)
        , m_pMethodOnGet(pMethodOnGet)
    {}

    operator CODE_TYPE() const { return Load(); }
    CRegisterParamNumericMethod& operator=(CODE_TYPE value)
    {
        Store(value);
        return *this;
    }

private:
    CODE_TYPE Load() const
    {
        KX_ASSERT(m_pMethodOnGet, "m_pMethodOnGet != NULL");
        return (this->TheClient()->*m_pMethodOnGet)();
    }
    bool IsPresent(CODE_TYPE value) const { return Load() == value; }
    /// Whether the value is another one is for the client to tell.
    bool Store(CODE_TYPE value)
    {
        KX_ASSERT(m_pMethodOnSet, "m_pMethodOnSet != NULL");
        (this->TheClient()->*m_pMethodOnSet)(value);
        return true;
    }

    const MethodOnSet m_pMethodOnSet;
    const MethodOnGet m_pMethodOnGet;
};

/// A text, which may be read and written in pieces. Any thread.
template <class Client, class MethodW>
class CRegisterParamText final : public CRegisterParamBase<Client, MethodW>
{
    using Base = CRegisterParamBase<Client, MethodW>;

public:
    CRegisterParamText(Client* pClient, const CRegisterRow& row, int64_t nLength, const char* szText = "",
                       MethodW pMethodW = nullptr)
        : Base(pClient, row, nLength, pMethodW)
        , m_strText(static_cast<size_t>(nLength) + 1, '\0')
    {
        Store(szText);
    }

    /// The text up to its terminator.
    GenICam::gcstring GetText() const
    {
        const std::lock_guard lock(m_mutex);
        return GenICam::gcstring(m_strText.c_str());
    }

    /// What the application's call does; a text that is too long is cut.
    void Set(const GenICam::gcstring& strText)
    {
        if (Store(strText.c_str()) || this->m_row.Has(KxRegister_AlwaysTold))
            this->Tell(true);
    }

    void Read(void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckReadable();
        this->CheckInside(nAddress);
        const int64_t nOffset = nAddress - this->GetAddress();
        const std::lock_guard lock(m_mutex);
        std::memcpy(pBuffer, &m_strText[static_cast<size_t>(nOffset)],
                    static_cast<size_t>(std::min(this->m_nLength - nOffset, nLength)));
    }
    void Write(const void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckWritable();
        this->CheckInside(nAddress);
        const int64_t nOffset = nAddress - this->GetAddress();
        const int64_t nDone = std::min(this->m_nLength - nOffset, nLength);
        {
            const std::lock_guard lock(m_mutex);
            std::memcpy(&m_strText[static_cast<size_t>(nOffset)], pBuffer, static_cast<size_t>(nDone));
            m_strText[static_cast<size_t>(nOffset + nDone)] = 0;
        }
        this->Show(false);
    }

private:
    bool Store(const char* szText)
    {
        const std::lock_guard lock(m_mutex);
        const size_t nRoom = m_strText.size() - 1;
        if (std::strncmp(m_strText.c_str(), szText, nRoom) == 0)
            return false;
        const size_t nDone = strnlen(szText, nRoom);
        std::fill(std::copy_n(szText, nDone, m_strText.begin()), m_strText.end(), '\0');
        return true;
    }

    mutable std::mutex m_mutex;
    std::string m_strText; // of the register's length and a terminator, whatever it holds
};

/// A text that the client keeps.
template <class Client, class MethodW>
class CRegisterParamTextMethod final : public CRegisterParamBase<Client, MethodW>
{
    using Base = CRegisterParamBase<Client, MethodW>;

public:
    using MethodOnSet = void (Client::*)(const GenICam::gcstring&);
    using MethodOnGet = GenICam::gcstring (Client::*)() const;

    CRegisterParamTextMethod(Client* pClient, const CRegisterRow& row, int64_t nLength,
                             MethodOnSet pMethodOnSet, MethodOnGet pMethodOnGet, MethodW pMethodW = nullptr)
        : Base(pClient, row, nLength, pMethodW)
        , m_pMethodOnSet(pMethodOnSet)
        , m_pMethodOnGet(pMethodOnGet)
    {}

    operator GenICam::gcstring() const
    {
        KX_ASSERT(m_pMethodOnGet, "m_pMethodOnGet != NULL");
        return (this->TheClient()->*m_pMethodOnGet)();
    }
    CRegisterParamTextMethod& operator=(const GenICam::gcstring& strText)
    {
        KX_ASSERT(m_pMethodOnSet, "m_pMethodOnSet != NULL");
        (this->TheClient()->*m_pMethodOnSet)(strText);
        return *this;
    }

    /// What the application's call does.
    void Set(const GenICam::gcstring& strText)
    {
        *this = strText;
        this->Tell(true);
    }

    void Read(void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckReadable();
        this->CheckStart(nAddress);
        const GenICam::gcstring strText = *this;
        const auto nTextLength = static_cast<int64_t>(strText.size());
        this->CheckLength(nLength, nTextLength);
        std::memset(pBuffer, 0, static_cast<size_t>(nLength));
        std::memcpy(pBuffer, strText.c_str(), static_cast<size_t>(nTextLength));
    }
    void Write(const void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckWritable();
        this->CheckStart(nAddress);
        GenICam::GuardBadAlloc([&] {
            const std::string strText(static_cast<const char*>(pBuffer), static_cast<size_t>(nLength));
            *this = GenICam::gcstring(strText.c_str()); // ends at the first zero
        });
        this->Show(false);
    }

private:
    const MethodOnSet m_pMethodOnSet;
    const MethodOnGet m_pMethodOnGet;
};

/// Numbers side by side that the client keeps; whole elements are read and written.
template <class Client, class MethodW, class TYPE>
class CRegisterParamNumberArrayMethod final : public CRegisterParamBase<Client, MethodW>
{
    using Base = CRegisterParamBase<Client, MethodW>;

public:
    using MethodOnSet = void (Client::*)(size_t, TYPE);
    using MethodOnGet = TYPE (Client::*)(size_t) const;

    CRegisterParamNumberArrayMethod(Client* pClient, const CRegisterRow& row, int64_t nLength,
                                    MethodOnSet pMethodOnSet, MethodOnGet pMethodOnGet,
                                    MethodW pMethodW = nullptr)
        : Base(pClient, row, nLength, pMethodW)
        , m_pMethodOnSet(pMethodOnSet)
        , m_pMethodOnGet(pMethodOnGet)
    {}

    void Read(void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckReadable();
        auto* pElement = static_cast<char*>(pBuffer);
        size_t nIndex = FirstIndex(nAddress);
        for (int64_t nLeft = nLength; nLeft >= kSize; nLeft -= kSize, pElement += kSize) {
            const TYPE value = (this->TheClient()->*m_pMethodOnGet)(nIndex++);
            std::memcpy(pElement, &value, sizeof(value));
        }
    }
    void Write(const void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckWritable();
        const auto* pElement = static_cast<const char*>(pBuffer);
        size_t nIndex = FirstIndex(nAddress);
        for (int64_t nLeft = nLength; nLeft >= kSize; nLeft -= kSize, pElement += kSize) {
            TYPE value;
            std::memcpy(&value, pElement, sizeof(value));
            (this->TheClient()->*m_pMethodOnSet)(nIndex++, value);
        }
        this->Show(false);
    }

private:
    static constexpr int64_t kSize = sizeof(TYPE);

    size_t FirstIndex(int64_t nAddress) const
    {
        KX_ASSERT(this->GetAddress() <= nAddress, "this->m_nAddress <= nAddress");
        return static_cast<size_t>((nAddress - this->GetAddress()) / kSize);
    }

    const MethodOnSet m_pMethodOnSet;
    const MethodOnGet m_pMethodOnGet;
};

/// A block of records that the client keeps: each begins `nStride` bytes behind the one before and has fields
/// of `TYPE` side by side, one of which an access serves.
template <class Client, class MethodW, class TYPE>
class CRegisterParamRecordsMethod final : public CRegisterParamBase<Client, MethodW>
{
    using Base = CRegisterParamBase<Client, MethodW>;

public:
    /// Record and field. The client checks them, for a block may end within a record.
    using MethodOnSet = void (Client::*)(size_t, size_t, TYPE);
    using MethodOnGet = TYPE (Client::*)(size_t, size_t) const;

    /// @param nLast the last address that is served.
    CRegisterParamRecordsMethod(Client* pClient, const CRegisterRow& row, int64_t nLast, int64_t nStride,
                                MethodOnSet pMethodOnSet, MethodOnGet pMethodOnGet,
                                MethodW pMethodW = nullptr)
        : Base(pClient, row, nLast - row.nAddress + 1, pMethodW)
        , m_nStride(nStride)
        , m_pMethodOnSet(pMethodOnSet)
        , m_pMethodOnGet(pMethodOnGet)
    {}

    int64_t GetStep() const override { return kSize; }

    void Read(void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckReadable();
        this->CheckInside(nAddress);
        this->CheckLength(nLength, kSize);
        const TYPE value = (this->TheClient()->*m_pMethodOnGet)(Record(nAddress), Field(nAddress));
        std::memcpy(pBuffer, &value, sizeof(value));
    }
    void Write(const void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckWritable();
        this->CheckInside(nAddress);
        this->CheckLength(nLength, kSize);
        TYPE value;
        std::memcpy(&value, pBuffer, sizeof(value));
        (this->TheClient()->*m_pMethodOnSet)(Record(nAddress), Field(nAddress), value);
        this->Show(false);
    }

private:
    static constexpr int64_t kSize = sizeof(TYPE);

    size_t Record(int64_t nAddress) const
    {
        return static_cast<size_t>((nAddress - this->GetAddress()) / m_nStride);
    }
    size_t Field(int64_t nAddress) const
    {
        return static_cast<size_t>((nAddress - this->GetAddress()) % m_nStride / kSize);
    }

    const int64_t m_nStride;
    const MethodOnSet m_pMethodOnSet;
    const MethodOnGet m_pMethodOnGet;
};

} // namespace KxApi
