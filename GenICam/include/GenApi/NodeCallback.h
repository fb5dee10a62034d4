// SPDX-License-Identifier: Apache-2.0
// Being told when a node changes.
#pragma once

#include <GenApi/INode.h>

namespace GenApi
{

/// When a node callback runs: while the map is locked, or after its lock has been given back.
typedef enum _ECallbackType
{
    cbPostInsideLock = 1,
    cbPostOutsideLock = 2
} ECallbackType;

namespace Detail
{
// Functions may be null, function objects of the program's own may not even know the question.
template <class Function>
auto IsCallable(const Function& function, int) -> decltype(static_cast<bool>(function))
{
    return static_cast<bool>(function);
}
template <class Function>
bool IsCallable(const Function&, long)
{
    return true;
}
template <class Function>
bool IsCallable(const Function& function)
{
    return IsCallable(function, 0);
}
} // namespace Detail

/// A callback of a node. The node owns it after RegisterCallback and calls Destroy in the end.
/// It runs in the thread that made the change, before the change returns. An exception out of it leaves the
/// changing call; the value has been written then, and later callbacks are dropped.
class GENAPI_DECL CNodeCallback
{
public:
    CNodeCallback(INode* pNode, ECallbackType CallbackType)
        : m_pNode(pNode)
        , m_CallbackType(CallbackType)
    {}
    CNodeCallback(const CNodeCallback&) = delete;
    CNodeCallback& operator=(const CNodeCallback&) = delete;
    virtual ~CNodeCallback() = default;

    /// Runs the callback if it is of that type.
    virtual void operator()(ECallbackType CallbackType) const = 0;

    /// Ends the callback's life; called once.
    virtual void Destroy() = 0;

    /// The node that it is registered at.
    INode* GetNode() { return m_pNode; }

    /// When it runs.
    ECallbackType GetCallbackType() const { return m_CallbackType; }

protected:
    INode* m_pNode;
    ECallbackType m_CallbackType;
};

/// Callback on a function or function object that takes an INode*; one that is null does nothing.
template <class Function>
class Function_NodeCallback : public CNodeCallback
{
public:
    Function_NodeCallback(INode* pNode, const Function& function, ECallbackType CallbackType)
        : CNodeCallback(pNode, CallbackType)
        , m_Function(function)
    {}

    void operator()(ECallbackType CallbackType) const override
    {
        if (m_CallbackType == CallbackType && Detail::IsCallable(m_Function))
            m_Function(m_pNode);
    }

    void Destroy() override { delete this; }

private:
    mutable Function m_Function;
};

/// Callback on a member function that takes an INode*; the object is not owned and must outlive the
/// registration.
template <class Client, typename Member>
class Member_NodeCallback : public CNodeCallback
{
public:
    /// The kind of member function that Member usually is.
    typedef void (Client::*PMEMBERFUNC)(INode*);

    Member_NodeCallback(INode* pNode, Client& client, Member member, ECallbackType CallbackType)
        : CNodeCallback(pNode, CallbackType)
        , m_Client(client)
        , m_Member(member)
    {}

    void operator()(ECallbackType CallbackType) const override
    {
        if (m_CallbackType == CallbackType && m_Member)
            (m_Client.*m_Member)(m_pNode);
    }

    void Destroy() override { delete this; }

private:
    Client& m_Client;
    Member m_Member;
};

/// Makes a callback without registering it; RegisterCallback takes it over.
template <class Function>
CNodeCallback* make_NodeCallback(INode* pNode, Function function, ECallbackType CallbackType)
{
    return new Function_NodeCallback<Function>(pNode, function, CallbackType);
}

/// Makes a callback on a member function without registering it.
template <class Client, typename Member>
CNodeCallback* make_NodeCallback(INode* pNode, Client& client, Member member, ECallbackType CallbackType)
{
    return new Member_NodeCallback<Client, Member>(pNode, client, member, CallbackType);
}

/// Registers a function as callback.
/// @return handle for Deregister.
template <class Function>
CallbackHandleType Register(INode* pNode, Function function, ECallbackType CallbackType = cbPostInsideLock)
{
    return pNode->RegisterCallback(make_NodeCallback(pNode, function, CallbackType));
}

/// Registers a member function as callback.
template <class Client, typename Member>
CallbackHandleType Register(INode* pNode, Client& client, Member member,
                            ECallbackType CallbackType = cbPostInsideLock)
{
    return pNode->RegisterCallback(make_NodeCallback(pNode, client, member, CallbackType));
}

/// Removes a callback by its handle, which names the node as well; 0 does nothing.
GENAPI_DECL void Deregister(CallbackHandleType hCallback);

} // namespace GenApi
