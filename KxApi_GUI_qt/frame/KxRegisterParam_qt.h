// SPDX-License-Identifier: Apache-2.0
// Registers: what lies behind the addresses of a window's port.
//
// A client has, for the place told by exceptions, a static function `const char* SourceFile()`.
#pragma once

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>
#include <Base/GCString.h>
#include <GenApi/IBase.h>
#include <KxSDKCommon/KxAssert.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

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
};

/// What registers have in common. `MethodW`, a `void (Client::*)()`, runs after each successful write unless
/// null. Any thread, as far as the client's methods are.
template <class Client, class MethodW>
class CRegisterParamBase : public IKxRegisterParam
{
public:
    CRegisterParamBase(Client* pClient, MethodW pMethodW, int64_t nAddress, int64_t nLength,
                       GenApi::EAccessMode eAccessMode)
        : m_pClient(pClient)
        , m_pMethodW(pMethodW)
        , m_nAddress(nAddress)
        , m_nLength(nLength)
        , m_eAccessMode(eAccessMode)
    {}
    CRegisterParamBase(const CRegisterParamBase&) = delete;
    CRegisterParamBase& operator=(const CRegisterParamBase&) = delete;

    int64_t GetAddress() const override { return m_nAddress; }
    int64_t GetLength() const override { return m_nLength; }

protected:
    template <class E>
    static GenICam::ExceptionReporter<E> Reporter(int nLine, const char* szType)
    {
        return GenICam::ExceptionReporter<E>(Client::SourceFile(), nLine, szType);
    }

    void CheckReadable() const
    {
        if (!GenApi::IsReadable(m_eAccessMode))
            throw Reporter<GenICam::AccessException>(__LINE__, "AccessException")
                .Report("Node is not readable.");
    }
    void CheckWritable() const
    {
        if (!GenApi::IsWritable(m_eAccessMode))
            throw Reporter<GenICam::AccessException>(__LINE__, "AccessException")
                .Report("Node is not writable.");
    }
    void CheckLength(int64_t nLength, int64_t nNeeded) const
    {
        if (nLength < nNeeded)
            throw Reporter<GenICam::OutOfRangeException>(__LINE__, "OutOfRangeException")
                .Report("%s = %lld must be equal or greater than Min = %lld", "Length",
                        static_cast<long long>(nLength), static_cast<long long>(nNeeded));
    }
    void CheckStart(int64_t nAddress) const
    {
        KX_ASSERT(this->m_nAddress == nAddress, "this->m_nAddress == nAddress");
    }
    void CheckInside(int64_t nAddress) const
    {
        KX_ASSERT(this->m_nAddress <= nAddress, "this->m_nAddress <= nAddress");
        KX_ASSERT(nAddress < this->m_nAddress + this->m_nLength,
                  "nAddress < this->m_nAddress + this->m_nLength");
    }
    void RunMethodW()
    {
        if (m_pMethodW)
            (m_pClient->*m_pMethodW)();
    }

    Client* const m_pClient;
    const MethodW m_pMethodW;
    const int64_t m_nAddress;
    const int64_t m_nLength;
    const GenApi::EAccessMode m_eAccessMode;
};

/// A number of type `CODE_TYPE` here and of type `XML_TYPE` on the wire.
template <class Client, class MethodW, class CODE_TYPE, class XML_TYPE>
class CRegisterParamNumeric final : public CRegisterParamBase<Client, MethodW>
{
    using Base = CRegisterParamBase<Client, MethodW>;

public:
    CRegisterParamNumeric(Client* pClient, MethodW pMethodW, int64_t nAddress,
                          GenApi::EAccessMode eAccessMode, CODE_TYPE value)
        : Base(pClient, pMethodW, nAddress, sizeof(XML_TYPE), eAccessMode)
        , m_Value(value)
    {}

    CODE_TYPE GetValue() const { return m_Value; }
    /// Stores the value and does nothing else.
    void SetValue(CODE_TYPE value) { m_Value = value; }
    /// What a write does after it has stored the value.
    void OnWritten() { this->RunMethodW(); }

    void Read(void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckReadable();
        this->CheckStart(nAddress);
        this->CheckLength(nLength, this->m_nLength);
        const auto value = static_cast<XML_TYPE>(m_Value.load());
        std::memcpy(pBuffer, &value, sizeof(value));
    }
    void Write(const void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckWritable();
        this->CheckStart(nAddress);
        this->CheckLength(nLength, this->m_nLength);
        XML_TYPE value;
        std::memcpy(&value, pBuffer, sizeof(value));
        m_Value = static_cast<CODE_TYPE>(value);
        this->RunMethodW();
    }

private:
    std::atomic<CODE_TYPE> m_Value;
};

/// A number that the client keeps.
template <class Client, class MethodW, class CODE_TYPE, class XML_TYPE>
class CRegisterParamNumericMethod final : public CRegisterParamBase<Client, MethodW>
{
    using Base = CRegisterParamBase<Client, MethodW>;

public:
    using MethodOnSet = void (Client::*)(CODE_TYPE);
    using MethodOnGet = CODE_TYPE (Client::*)() const;

    CRegisterParamNumericMethod(Client* pClient, MethodW pMethodW, int64_t nAddress,
                                GenApi::EAccessMode eAccessMode, MethodOnSet pMethodOnSet,
                                MethodOnGet pMethodOnGet)
        : Base(pClient, pMethodW, nAddress, sizeof(XML_TYPE), eAccessMode)
        , m_pMethodOnSet(pMethodOnSet)
        , m_pMethodOnGet(pMethodOnGet)
    {}

    // Not explicit: the register stands for the value in expressions.
    operator CODE_TYPE() const
    {
        KX_ASSERT(m_pMethodOnGet, "m_pMethodOnGet != NULL");
        return (this->m_pClient->*m_pMethodOnGet)();
    }
    CRegisterParamNumericMethod& operator=(CODE_TYPE value)
    {
        KX_ASSERT(m_pMethodOnSet, "m_pMethodOnSet != NULL");
        (this->m_pClient->*m_pMethodOnSet)(value);
        return *this;
    }

    void Read(void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckReadable();
        this->CheckStart(nAddress);
        this->CheckLength(nLength, this->m_nLength);
        const auto value = static_cast<XML_TYPE>(static_cast<CODE_TYPE>(*this));
        std::memcpy(pBuffer, &value, sizeof(value));
    }
    void Write(const void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckWritable();
        this->CheckStart(nAddress);
        this->CheckLength(nLength, this->m_nLength);
        XML_TYPE value;
        std::memcpy(&value, pBuffer, sizeof(value));
        *this = static_cast<CODE_TYPE>(value);
        this->RunMethodW();
    }

private:
    const MethodOnSet m_pMethodOnSet;
    const MethodOnGet m_pMethodOnGet;
};

/// A text, which may be read and written in pieces. One thread at a time.
template <class Client, class MethodW>
class CRegisterParamText final : public CRegisterParamBase<Client, MethodW>
{
    using Base = CRegisterParamBase<Client, MethodW>;

public:
    CRegisterParamText(Client* pClient, MethodW pMethodW, int64_t nAddress, int64_t nLength,
                       GenApi::EAccessMode eAccessMode)
        : Base(pClient, pMethodW, nAddress, nLength, eAccessMode)
        , m_vecText(static_cast<size_t>(nLength) + 1)
    {}

    /// The text up to its terminator.
    const char* GetText() const { return m_vecText.data(); }

    void Read(void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckReadable();
        this->CheckInside(nAddress);
        const int64_t nOffset = nAddress - this->m_nAddress;
        std::memcpy(pBuffer, &m_vecText[static_cast<size_t>(nOffset)],
                    static_cast<size_t>(std::min(this->m_nLength - nOffset, nLength)));
    }
    void Write(const void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckWritable();
        this->CheckInside(nAddress);
        const int64_t nOffset = nAddress - this->m_nAddress;
        const int64_t nDone = std::min(this->m_nLength - nOffset, nLength);
        std::memcpy(&m_vecText[static_cast<size_t>(nOffset)], pBuffer, static_cast<size_t>(nDone));
        m_vecText[static_cast<size_t>(nOffset + nDone)] = 0;
        this->RunMethodW();
    }

private:
    std::vector<char> m_vecText;
};

/// A text that the client keeps.
template <class Client, class MethodW>
class CRegisterParamTextMethod final : public CRegisterParamBase<Client, MethodW>
{
    using Base = CRegisterParamBase<Client, MethodW>;

public:
    using MethodOnSet = void (Client::*)(const GenICam::gcstring&);
    using MethodOnGet = GenICam::gcstring (Client::*)() const;

    CRegisterParamTextMethod(Client* pClient, MethodW pMethodW, int64_t nAddress, int64_t nLength,
                             GenApi::EAccessMode eAccessMode, MethodOnSet pMethodOnSet,
                             MethodOnGet pMethodOnGet)
        : Base(pClient, pMethodW, nAddress, nLength, eAccessMode)
        , m_pMethodOnSet(pMethodOnSet)
        , m_pMethodOnGet(pMethodOnGet)
    {}

    operator GenICam::gcstring() const
    {
        KX_ASSERT(m_pMethodOnGet, "m_pMethodOnGet != NULL");
        return (this->m_pClient->*m_pMethodOnGet)();
    }
    CRegisterParamTextMethod& operator=(const GenICam::gcstring& strText)
    {
        KX_ASSERT(m_pMethodOnSet, "m_pMethodOnSet != NULL");
        (this->m_pClient->*m_pMethodOnSet)(strText);
        return *this;
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
        this->RunMethodW();
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

    CRegisterParamNumberArrayMethod(Client* pClient, MethodW pMethodW, int64_t nAddress, int64_t nLength,
                                    GenApi::EAccessMode eAccessMode, MethodOnSet pMethodOnSet,
                                    MethodOnGet pMethodOnGet)
        : Base(pClient, pMethodW, nAddress, nLength, eAccessMode)
        , m_pMethodOnSet(pMethodOnSet)
        , m_pMethodOnGet(pMethodOnGet)
    {}

    void Read(void* pBuffer, int64_t nAddress, int64_t nLength) override
    {
        this->CheckReadable();
        auto* pElement = static_cast<char*>(pBuffer);
        size_t nIndex = FirstIndex(nAddress);
        for (int64_t nLeft = nLength; nLeft >= kSize; nLeft -= kSize, pElement += kSize) {
            const TYPE value = (this->m_pClient->*m_pMethodOnGet)(nIndex++);
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
            (this->m_pClient->*m_pMethodOnSet)(nIndex++, value);
        }
        this->RunMethodW();
    }

private:
    static constexpr int64_t kSize = sizeof(TYPE);

    size_t FirstIndex(int64_t nAddress) const
    {
        KX_ASSERT(this->m_nAddress <= nAddress, "this->m_nAddress <= nAddress");
        return static_cast<size_t>((nAddress - this->m_nAddress) / kSize);
    }

    const MethodOnSet m_pMethodOnSet;
    const MethodOnGet m_pMethodOnGet;
};

} // namespace KxApi
