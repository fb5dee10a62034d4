// SPDX-License-Identifier: Apache-2.0
// Small descriptions for tests, and words for what is in them.
#pragma once

#include "Outline.h"
#include "description/Description.h"

#include <Base/GCException.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace KxGenApi
{

/// A description with these nodes; they begin in line 2.
inline std::string Doc(std::string_view nodes)
{
    return "<RegisterDescription ModelName=\"M\" VendorName=\"V\" StandardNameSpace=\"None\" "
           "SchemaMajorVersion=\"1\" "
           "SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"2\" MinorVersion=\"3\" "
           "SubMinorVersion=\"4\" ProductGuid=\"P\" VersionGuid=\"G\" "
           "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n" +
           std::string(nodes) + "\n</RegisterDescription>\n";
}

inline std::shared_ptr<const Description> ReadNodes(std::string_view nodes)
{
    return ReadDescription(Doc(nodes));
}

using KxTest::NodesAsXml;

/// The same with nodes in the short notation.
inline std::shared_ptr<const Description> ReadOutline(std::string_view nodes)
{
    return ReadNodes(NodesAsXml(nodes));
}

/// "Class: description" of the exception that an action raises, "nothing" if there is none.
template <typename Action>
std::string ErrorOf(const Action& action)
{
    try {
        action();
        return "nothing";
    } catch (const GenICam::PropertyException& e) {
        return std::string("Property: ") + e.GetDescription();
    } catch (const GenICam::InvalidArgumentException& e) {
        return std::string("InvalidArgument: ") + e.GetDescription();
    } catch (const GenICam::RuntimeException& e) {
        return std::string("Runtime: ") + e.GetDescription();
    } catch (const GenICam::GenericException& e) {
        return e.what();
    }
}

inline std::string ErrorOfNodes(std::string_view nodes)
{
    return ErrorOf([&] { ReadNodes(nodes); });
}

/// Text of the first property of that kind, "(none)" if there is none.
inline std::string TextOf(const Description& description, std::string_view node, Prop prop)
{
    const Property* const property = description.Find(description.FindNode(node), prop);
    return property ? std::string(property->text) : "(none)";
}

/// The names of nodes, sorted.
template <typename Indexes>
std::vector<std::string> Names(const Description& description, const Indexes& indexes)
{
    std::vector<std::string> names;
    for (const NodeIndex node : indexes)
        names.emplace_back(description.Node(node).name);
    std::sort(names.begin(), names.end());
    return names;
}

inline std::vector<std::string> AllNames(const Description& description)
{
    std::vector<std::string> names;
    for (NodeIndex i = 0; i < description.NodeCount(); ++i)
        names.emplace_back(description.Node(i).name);
    return names;
}

inline std::vector<std::string> DependentNames(const Description& description, std::string_view node)
{
    return Names(description, description.Dependents(description.FindNode(node)));
}

/// All that a description says, in a form that doesn't depend on the numbers of its nodes. Two descriptions
/// that say the same are equal in it.
inline std::vector<std::string> Content(const Description& description)
{
    const auto nameOf = [&](NodeIndex node) {
        return node == kNoNode ? "-" : std::string(description.Node(node).name);
    };
    std::vector<std::string> lines;
    for (NodeIndex i = 0; i < description.NodeCount(); ++i) {
        const NodeData& node = description.Node(i);
        std::string line(node.name);
        line += " type " + std::to_string(static_cast<int>(node.type)) + " space " +
                std::to_string(node.nameSpace) + (node.isFeature ? " feature" : "") +
                (node.synthetic ? " synthetic" : "");
        for (const Property& p : description.Properties(i))
            line += "\n  " + std::to_string(static_cast<int>(p.id)) + " part " +
                    std::to_string(static_cast<int>(p.part)) + " -> " + nameOf(p.node) + " + " +
                    nameOf(p.offsetNode) + " = " + std::to_string(p.integer) + " [" +
                    std::to_string(p.index) + "] " + (p.hasOffset ? "offset " : "") +
                    std::string(p.attribute) + ": " + std::string(p.text);
        for (const std::string& name : Names(description, description.Dependents(i)))
            line += "\n  dependent " + name;
        for (const std::string& name : Names(description, description.Selectors(i)))
            line += "\n  selector " + name;
        lines.push_back(line);
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

} // namespace KxGenApi
