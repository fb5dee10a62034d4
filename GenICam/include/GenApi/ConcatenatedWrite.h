// SPDX-License-Identifier: Apache-2.0
// A list of values that is written in one go.
#pragma once

#include <Base/GCException.h>
#include <Base/GCString.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/GenApiNamespace.h>

#include <cstdint>

namespace GenApi
{

/// Collects names of nodes and values for INodeMap::ConcatenatedWrite; they are written in the order in which
/// they were added. INodeMap::NewNodeWriteConcatenator makes one. One thread at a time.
class GENAPI_DECL_ABSTRACT CNodeWriteConcatenator
{
public:
    virtual void Add(const GenICam::gcstring& NodeName, const GenICam::gcstring& Value) = 0;
    virtual void Add(const GenICam::gcstring& NodeName, const char* pValue) = 0;
    virtual void Add(const GenICam::gcstring& NodeName, const int64_t Value) = 0;
    virtual void Add(const GenICam::gcstring& NodeName, const double Value) = 0;
    virtual void Add(const GenICam::gcstring& NodeName, const bool Value) = 0;

    /// Forgets all values.
    virtual void Clear() = 0;
    /// Deletes the object.
    virtual void Destroy() = 0;

protected:
    virtual ~CNodeWriteConcatenator() {}
};

/// Owns such a list. While it owns none the calls raise AccessException "Concatenator not present (reference
/// not valid)".
class CNodeWriteConcatenatorRef
{
public:
    CNodeWriteConcatenatorRef()
        : m_pList(nullptr)
    {}
    CNodeWriteConcatenatorRef(CNodeWriteConcatenator* pList)
        : m_pList(pList)
    {}
    CNodeWriteConcatenatorRef(const CNodeWriteConcatenatorRef&) = delete;
    CNodeWriteConcatenatorRef& operator=(const CNodeWriteConcatenatorRef&) = delete;
    ~CNodeWriteConcatenatorRef() { Take(nullptr); }

    /// Destroys its list and takes over another.
    CNodeWriteConcatenatorRef& operator=(CNodeWriteConcatenator* pList)
    {
        Take(pList);
        return *this;
    }

    template <typename Value>
    void _Add(const GenICam::gcstring& NodeName, const Value& value)
    {
        List().Add(NodeName, value);
    }
    void _Add(const GenICam::gcstring& NodeName, const char* pValue) { List().Add(NodeName, pValue); }
    void _Clear() { List().Clear(); }

    /// Gives the list away.
    CNodeWriteConcatenator* Release()
    {
        CNodeWriteConcatenator* const pList = m_pList;
        m_pList = nullptr;
        return pList;
    }
    /// The list, null if there is none.
    CNodeWriteConcatenator* get() const { return m_pList; }
    operator CNodeWriteConcatenator*() const { return &List(); }

private:
    CNodeWriteConcatenator& List() const
    {
        if (m_pList == nullptr)
            throw ACCESS_EXCEPTION("Concatenator not present (reference not valid)");
        return *m_pList;
    }
    void Take(CNodeWriteConcatenator* pList)
    {
        if (m_pList != nullptr && m_pList != pList)
            m_pList->Destroy();
        m_pList = pList;
    }

    CNodeWriteConcatenator* m_pList;
};

} // namespace GenApi
