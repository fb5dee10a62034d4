// SPDX-License-Identifier: Apache-2.0
// A node map over a fake device, what calls on it raise, and which of its callbacks run.
#pragma once

#include "FakePort.h"
#include "Outline.h"

#include <Base/GCException.h>
#include <GenApi/GenApi.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace KxTest
{

/// A map made from the short notation, connected to its port.
class TestMap
{
public:
    explicit TestMap(std::string_view outline, bool connect = true)
    {
        map._LoadXMLFromString(DescriptionAsXml(outline).c_str());
        if (connect)
            map._Connect(&port);
    }

    /// The node as that interface; a test that asks for one that isn't there is wrong.
    template <class Interface = GenApi::INode>
    Interface& Get(const char* name) const
    {
        Interface* pNode = dynamic_cast<Interface*>(map._GetNode(name));
        if (!pNode)
            throw std::logic_error(std::string("no such node of that kind: ") + name);
        return *pNode;
    }
    GenApi::IInteger& Int(const char* name) const { return Get<GenApi::IInteger>(name); }
    GenApi::IFloat& Flt(const char* name) const { return Get<GenApi::IFloat>(name); }
    GenApi::IEnumeration& Enum(const char* name) const { return Get<GenApi::IEnumeration>(name); }
    GenApi::IRegister& Reg(const char* name) const { return Get<GenApi::IRegister>(name); }
    GenApi::IValue& Value(const char* name) const { return Get<GenApi::IValue>(name); }

    FakePort port; // outlives the map, as a port has to
    GenApi::CNodeMapRef map;
};

/// What a call raised.
struct Raised
{
    std::string kind; ///< class without "Exception", "none" if nothing was raised
    std::string description;
    std::string what;
};

template <class Call>
Raised RaisedBy(const Call& call)
{
    const auto of = [](const char* kind, const GenICam::GenericException& e) {
        return Raised{kind, e.GetDescription(), e.what()};
    };
    try {
        call();
    } catch (const GenICam::OutOfRangeException& e) {
        return of("OutOfRange", e);
    } catch (const GenICam::AccessException& e) {
        return of("Access", e);
    } catch (const GenICam::InvalidArgumentException& e) {
        return of("InvalidArgument", e);
    } catch (const GenICam::LogicalErrorException& e) {
        return of("LogicalError", e);
    } catch (const GenICam::RuntimeException& e) {
        return of("Runtime", e);
    } catch (const GenICam::PropertyException& e) {
        return of("Property", e);
    } catch (const GenICam::GenericException& e) {
        return of("Generic", e);
    } catch (const std::exception& e) {
        return {"std", e.what(), e.what()};
    }
    return {"none", "", ""};
}

/// The class of what a call raised, "none" if nothing.
template <class Call>
std::string KindRaisedBy(const Call& call)
{
    return RaisedBy(call).kind;
}

/// Words in alphabetical order, with a blank between them.
inline std::string Sorted(std::vector<std::string> words)
{
    std::sort(words.begin(), words.end());
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

/// Names of nodes or features, sorted.
template <class List>
std::string NamesOf(const List& list)
{
    std::vector<std::string> names;
    for (auto* pItem : list)
        names.push_back(dynamic_cast<GenApi::INode*>(pItem)->GetName().c_str());
    return Sorted(names);
}

/// Listens to all nodes of a map, with callbacks of both kinds.
class CallbackLog
{
public:
    explicit CallbackLog(const TestMap& test)
    {
        GenApi::NodeList_t nodes;
        test.map._GetNodes(nodes);
        for (GenApi::INode* pNode : nodes)
            for (const auto type : {GenApi::cbPostInsideLock, GenApi::cbPostOutsideLock}) {
                const std::string name = pNode->GetName().c_str();
                m_handles.push_back(GenApi::Register(
                    pNode, [this, type, name](GenApi::INode*) { m_fired.emplace_back(type, name); }, type));
            }
    }
    CallbackLog(const CallbackLog&) = delete;
    CallbackLog& operator=(const CallbackLog&) = delete;
    ~CallbackLog()
    {
        for (const GenApi::CallbackHandleType handle : m_handles)
            GenApi::Deregister(handle);
    }

    /// The nodes whose callbacks ran since the last call, sorted. Whatever the change, those inside the lock
    /// have to come first and those outside belong to the same nodes.
    std::string Take()
    {
        std::vector<std::string> inside, outside;
        for (const auto& [type, name] : std::exchange(m_fired, {})) {
            EXPECT_TRUE(type != GenApi::cbPostInsideLock || outside.empty())
                << name << " ran inside too late";
            (type == GenApi::cbPostInsideLock ? inside : outside).push_back(name);
        }
        EXPECT_EQ(Sorted(inside), Sorted(outside));
        return Sorted(inside);
    }

private:
    std::vector<GenApi::CallbackHandleType> m_handles;
    std::vector<std::pair<GenApi::ECallbackType, std::string>> m_fired;
};

} // namespace KxTest
