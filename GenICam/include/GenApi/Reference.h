// SPDX-License-Identifier: Apache-2.0
// References to nodes that generated code fills in when a node map is loaded.
#pragma once

#include <Base/GCException.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/IBase.h>

namespace GenApi
{

/// A reference that can be set.
struct GENAPI_DECL_ABSTRACT IReference
{
    /// Refers to the interface of that object; null, or an object without it, leaves the reference unset.
    virtual void SetReference(IBase* ptr) = 0;

protected:
    ~IReference() = default;
};

/// A reference to an enumeration whose entries are known at compile time.
struct GENAPI_DECL_ABSTRACT IEnumReference
{
    /// The entry of that name has that place in the enumeration type.
    virtual void SetEnumReference(int Index, GenICam::gcstring Name) = 0;
    /// How many places there are; empties all.
    virtual void SetNumEnums(int NumEnums) = 0;

protected:
    ~IEnumReference() = default;
};

/// Holds the interface I of what it is set to. All calls of references that are derived from it raise
/// AccessException "Feature not present (reference not valid)" while it is unset, but GetAccessMode, which is
/// NI. Any thread may use a reference; setting it must not coincide with that.
template <class T, class I = T>
class CReferenceT : public T, public IReference
{
public:
    using T::operator=;

    CReferenceT()
        : m_Ptr(nullptr)
    {}

    void SetReference(IBase* ptr) override { m_Ptr = ptr != nullptr ? dynamic_cast<I*>(ptr) : nullptr; }

    /// Whether it is set.
    bool IsValid() const { return m_Ptr != nullptr; }

protected:
    /// What it is set to; the exception above if it isn't.
    I& Target() const
    {
        if (m_Ptr == nullptr)
            throw ACCESS_EXCEPTION("Feature not present (reference not valid)");
        return *m_Ptr;
    }

    I* m_Ptr;
};

/// Reference to anything that has an access mode.
template <class T, class I = T>
class CBaseRefT : public CReferenceT<T, I>
{
public:
    using CReferenceT<T, I>::operator=;

    EAccessMode GetAccessMode() const override
    {
        return this->IsValid() ? this->Target().GetAccessMode() : NI;
    }
};
typedef CBaseRefT<IBase> CBaseRef;

} // namespace GenApi
