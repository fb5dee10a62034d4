// SPDX-License-Identifier: Apache-2.0
// A text feature.
#pragma once

#include <GenApi/IValue.h>

namespace GenApi
{

/// A text. Any thread; calls take the lock of the node map.
struct GENAPI_DECL_ABSTRACT IString : virtual public IValue
{
    virtual IString& operator=(const GenICam::gcstring& Value) = 0;

    /// Writes the text; OutOfRangeException if it is longer than GetMaxLength.
    /// @param Verify checks the access mode: AccessException.
    virtual void SetValue(const GenICam::gcstring& Value, bool Verify = true) = 0;

    /// Reads the text; AccessException if it can't be read.
    /// @param IgnoreCache reads the device even if the value is cached.
    virtual GenICam::gcstring GetValue(bool Verify = false, bool IgnoreCache = false) = 0;
    virtual GenICam::gcstring operator()() = 0;
    virtual GenICam::gcstring operator*() = 0;

    /// Longest text in bytes.
    virtual int64_t GetMaxLength(bool Verify = false) = 0;
};

/// Reference to a text.
template <class T>
class CStringRefT : public CValueRefT<T>
{
public:
    IString& operator=(const GenICam::gcstring& Value) override
    {
        this->Target().SetValue(Value);
        return *this;
    }
    void SetValue(const GenICam::gcstring& Value, bool Verify = true) override
    {
        this->Target().SetValue(Value, Verify);
    }
    GenICam::gcstring GetValue(bool Verify = false, bool IgnoreCache = false) override
    {
        return this->Target().GetValue(Verify, IgnoreCache);
    }
    GenICam::gcstring operator()() override { return this->Target()(); }
    GenICam::gcstring operator*() override { return *this->Target(); }
    int64_t GetMaxLength(bool Verify = false) override { return this->Target().GetMaxLength(Verify); }
};
typedef CStringRefT<IString> CStringRef;

} // namespace GenApi
