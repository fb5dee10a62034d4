// SPDX-License-Identifier: Apache-2.0
// Smart pointers to the interfaces of nodes: they find the interface of what they are given and check for
// null.
#pragma once

#include <Base/GCException.h>
#include <GenApi/IBoolean.h>
#include <GenApi/ICategory.h>
#include <GenApi/IChunkPort.h>
#include <GenApi/ICommand.h>
#include <GenApi/IDeviceInfo.h>
#include <GenApi/IEnumEntry.h>
#include <GenApi/IEnumeration.h>
#include <GenApi/IFloat.h>
#include <GenApi/IInteger.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>
#include <GenApi/IPort.h>
#include <GenApi/IPortConstruct.h>
#include <GenApi/IPortRecorder.h>
#include <GenApi/IRegister.h>
#include <GenApi/ISelector.h>
#include <GenApi/IString.h>
#include <GenApi/IUserData.h>
#include <GenApi/IValue.h>

namespace GenApi
{

/// Pointer to interface T, made from any B by a dynamic cast; null when the object has no such interface. It
/// owns nothing. Dereferencing null raises LogicalErrorException "NULL pointer dereferenced".
template <class T, class B = IBase>
class CPointer
{
public:
    CPointer() = default;
    CPointer(B* pB)
        : m_pT(dynamic_cast<T*>(pB))
    {}
    CPointer(const CPointer&) = default;
    CPointer& operator=(const CPointer&) = default;
    virtual ~CPointer() {}

    CPointer& operator=(B* pB)
    {
        m_pT = dynamic_cast<T*>(pB);
        return *this;
    }

    /// The pointer itself, which may be null.
    operator T*() const noexcept { return m_pT; }
    T& operator*() const { return *Get(); }
    T& operator()() const { return *Get(); }
    T* operator->() const { return Get(); }

    /// Whether it points to anything.
    bool IsValid() const noexcept { return m_pT != nullptr; }
    explicit operator bool() const noexcept { return m_pT != nullptr; }

    bool operator==(const CPointer& other) const { return m_pT == other.m_pT; }
    bool operator==(T* pT) const { return m_pT == pT; }
    bool operator!=(const CPointer& other) const { return !(*this == other); }
    bool operator!=(T* pT) const { return m_pT != pT; }

protected:
    T* Get() const
    {
        if (m_pT == nullptr)
            throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
        return m_pT;
    }

    T* m_pT = nullptr;
};

typedef CPointer<IBase> CBasePtr;
typedef CPointer<INode> CNodePtr;
typedef CPointer<IValue> CValuePtr;
typedef CPointer<ICategory> CCategoryPtr;
typedef CPointer<IBoolean> CBooleanPtr;
typedef CPointer<IInteger> CIntegerPtr;
typedef CPointer<IString> CStringPtr;
typedef CPointer<IRegister> CRegisterPtr;
typedef CPointer<IEnumeration> CEnumerationPtr;
typedef CPointer<IEnumEntry> CEnumEntryPtr;
typedef CPointer<IPort> CPortPtr;
typedef CPointer<IPortConstruct> CPortConstructPtr;
typedef CPointer<ICommand> CCommandPtr;
typedef CPointer<ISelector> CSelectorPtr;
typedef CPointer<INodeMap, INodeMap> CNodeMapPtr;
typedef CPointer<IDeviceInfo, INodeMap> CDeviceInfoPtr;

typedef CPointer<IPortReplay> CPortReplayPtr;
typedef CPointer<IPortRecorder> CPortRecorderPtr;
typedef CPointer<IPortWriteList, IPortWriteList> CPortWriteListPtr;
typedef CPointer<IPortStackedConstruct> CPortStackedConstructPtr;
typedef CPointer<IChunkPort> CChunkPortPtr;
typedef CPointer<IUserData> CNodeUserDataPtr;
typedef CPointer<IUserData, INodeMap> CNodeMapUserDataPtr;

/// Pointer to a floating-point feature.
class CFloatPtr : public CPointer<IFloat>
{
public:
    CFloatPtr() = default;
    CFloatPtr(IBase* pB)
        : CPointer<IFloat>(pB)
    {}

    CFloatPtr& operator=(IBase* pB)
    {
        CPointer<IFloat>::operator=(pB);
        return *this;
    }

    /// The same value as a node of another kind; null if there is none. LogicalErrorException for null.
    IInteger* GetIntAlias() const { return dynamic_cast<IInteger*>(Get()->GetNode()->GetCastAlias()); }
    IEnumeration* GetEnumAlias() const
    {
        return dynamic_cast<IEnumeration*>(Get()->GetNode()->GetCastAlias());
    }
};

/// Enumeration with entries of a known type.
template <class EnumT>
using CEnumerationTPtr = CPointer<IEnumeration, IBase>;

/// The questions of IBase.h; an empty pointer answers false.
template <class T, class B>
inline bool IsReadable(const CPointer<T, B>& ptr)
{
    return ptr.IsValid() && IsReadable(ptr->GetAccessMode());
}
template <class T, class B>
inline bool IsWritable(const CPointer<T, B>& ptr)
{
    return ptr.IsValid() && IsWritable(ptr->GetAccessMode());
}
template <class T, class B>
inline bool IsImplemented(const CPointer<T, B>& ptr)
{
    return ptr.IsValid() && IsImplemented(ptr->GetAccessMode());
}
template <class T, class B>
inline bool IsAvailable(const CPointer<T, B>& ptr)
{
    return ptr.IsValid() && IsAvailable(ptr->GetAccessMode());
}

/// Name of the main interface of a node or value: "IInteger", "IFloat", ...; empty for null.
GENAPI_DECL GenICam::gcstring GetInterfaceName(IBase* pBase);

} // namespace GenApi
