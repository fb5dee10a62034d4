// SPDX-License-Identifier: Apache-2.0
// Reads whatever comes as a description, plain or zipped. What is accepted has to say the same when it is
// written and read again; then a node map over memory is asked everything and written to.
//
// Only exceptions of the GenICam family may leave a call.

#include "description/Description.h"
#include "description/Zip.h"

#include <Base/GCException.h>
#include <GenApi/GenApi.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <string_view>

using namespace GenApi;

namespace
{

/// Memory that holds a pattern until it is written.
class PatternPort : public IPort
{
public:
    EAccessMode GetAccessMode() const override { return RW; }

    void Read(void* buffer, int64_t address, int64_t length) override
    {
        Check(length);
        for (int64_t i = 0; i < length; ++i) {
            const uint64_t at = static_cast<uint64_t>(address) + static_cast<uint64_t>(i);
            const auto written = m_written.find(at);
            static_cast<uint8_t*>(buffer)[i] =
                written == m_written.end() ? static_cast<uint8_t>(at % 3) : written->second;
        }
    }

    void Write(const void* buffer, int64_t address, int64_t length) override
    {
        Check(length);
        for (int64_t i = 0; i < length; ++i)
            m_written[static_cast<uint64_t>(address) + static_cast<uint64_t>(i)] =
                static_cast<const uint8_t*>(buffer)[i];
    }

private:
    static void Check(int64_t length)
    {
        if (length < 0 || length > 4096)
            throw RUNTIME_EXCEPTION("the memory has no %lld bytes", static_cast<long long>(length));
    }

    std::map<uint64_t, uint8_t> m_written;
};

template <typename Call>
void Try(const Call& call)
{
    try {
        call();
    } catch (const GenICam::GenericException& e) {
        if (std::strlen(e.GetDescription()) > 255)
            std::abort(); // messages stay short whatever the text
    }
}

void AskNode(INode& node)
{
    Try([&] { node.GetName(true), node.GetVisibility(), node.GetToolTip(), node.GetDescription(); });
    Try([&] { node.GetDisplayName(), node.GetEventID(), node.GetDocuURL(), node.GetPollingTime(); });
    Try([&] {
        node.GetAlias(), node.GetCastAlias(), node.IsStreamable(), node.IsDeprecated(), node.IsFeature();
    });
    Try([&] { node.GetAccessMode(); });
    Try([&] { node.GetCachingMode(), node.IsCachable(), node.IsAccessModeCacheable(); });
    for (const ELinkType type : {ctReadingChildren, ctWritingChildren, ctInvalidatingChildren,
                                 ctDependingNodes, ctTerminalNodes, ctParentNodes})
    {
        NodeList_t children;
        Try([&] { node.GetChildren(children, type); });
    }
    GenICam::gcstring_vector names;
    Try([&] { node.GetPropertyNames(names); });
    for (const GenICam::gcstring& name : names) {
        GenICam::gcstring value, attribute;
        Try([&] { node.GetProperty(name, value, attribute); });
    }
    FeatureList_t features;
    Try([&] { dynamic_cast<GenApi::ISelector&>(node).GetSelectedFeatures(features); });
    Try([&] { dynamic_cast<GenApi::ISelector&>(node).GetSelectingFeatures(features); });
}

void AskValue(INode& node)
{
    if (auto* const integer = dynamic_cast<IInteger*>(&node)) {
        Try([&] { integer->GetValue(true); });
        Try([&] { integer->GetMin(); });
        Try([&] { integer->GetMax(); });
        Try([&] { integer->GetIncMode(), integer->GetInc(); });
        Try([&] { integer->GetListOfValidValues(); });
        Try([&] { integer->GetRepresentation(), integer->GetUnit(); });
    }
    if (auto* const real = dynamic_cast<IFloat*>(&node)) {
        Try([&] { real->GetValue(true); });
        Try([&] { real->GetMin(); });
        Try([&] { real->GetMax(); });
        Try([&] { real->HasInc(), real->GetIncMode(), real->GetInc(); });
        Try([&] { real->GetListOfValidValues(); });
        Try([&] { real->GetDisplayNotation(), real->GetDisplayPrecision(), real->GetRepresentation(); });
    }
    if (auto* const list = dynamic_cast<IEnumeration*>(&node)) {
        NodeList_t entries;
        Try([&] { list->GetEntries(entries); });
        Try([&] { list->GetCurrentEntry(); });
        Try([&] { list->GetIntValue(true); });
    }
    if (auto* const entry = dynamic_cast<IEnumEntry*>(&node))
        Try([&] {
            entry->GetValue(), entry->GetNumericValue(), entry->GetSymbolic(), entry->IsSelfClearing();
        });
    if (auto* const text = dynamic_cast<IString*>(&node))
        Try([&] { text->GetValue(), text->GetMaxLength(); });
    if (auto* const truth = dynamic_cast<IBoolean*>(&node))
        Try([&] { truth->GetValue(true); });
    if (auto* const memory = dynamic_cast<IRegister*>(&node)) {
        uint8_t bytes[8];
        Try([&] { memory->GetAddress(); });
        Try([&] { memory->GetLength(); });
        Try([&] { memory->Get(bytes, sizeof bytes); });
    }
    if (auto* const category = dynamic_cast<ICategory*>(&node)) {
        FeatureList_t features;
        Try([&] { category->GetFeatures(features); });
    }
    if (auto* const value = dynamic_cast<IValue*>(&node))
        Try([&] { value->ToString(true, true); });
}

void Write(INode& node)
{
    if (auto* const command = dynamic_cast<ICommand*>(&node)) {
        Try([&] { command->Execute(); });
        Try([&] { command->IsDone(); });
        return;
    }
    auto* const value = dynamic_cast<IValue*>(&node);
    if (!value)
        return;
    for (const char* text : {"1", "-0.5", "true"})
        Try([&] { value->FromString(text); });
    Try([&] { value->FromString(value->ToString(), false); });
    Try([&] { node.ImposeAccessMode(RO), node.InvalidateNode(); });
}

// What is written has to be readable, and after that stays as it is.
void CheckWriting(const KxGenApi::Description& description)
{
    const std::string first = KxGenApi::WriteXml(description);
    try {
        const auto again = KxGenApi::ReadDescription(first);
        if (again->NodeCount() != description.NodeCount() || KxGenApi::WriteXml(*again) != first)
            std::abort();
    } catch (const GenICam::GenericException&) {
        std::abort();
    }
    if (description.NodeCount() == 0)
        return;
    const auto part = KxGenApi::ExtractSubtree(description, description.NodeCount() / 2);
    if (KxGenApi::ReadDescription(KxGenApi::WriteXml(*part))->NodeCount() != part->NodeCount())
        std::abort();
}

void Use(std::string_view content)
{
    PatternPort port; // outlives the map
    CNodeMapRef map;
    if (KxGenApi::IsZip(content))
        map._LoadXMLFromZIPData(content.data(), content.size());
    else
        map._LoadXMLFromString(GenICam::gcstring(content.data(), content.size()));
    NodeList_t nodes;
    map._GetNodes(nodes);
    for (INode* const node : nodes)
        AskNode(*node), AskValue(*node); // without a port
    for (INode* const node : nodes)
        if (dynamic_cast<IPort*>(node))
            Try([&] { map._Connect(&port, node->GetName()); });
    for (INode* const node : nodes)
        AskNode(*node), AskValue(*node);
    for (INode* const node : nodes)
        Write(*node);
    Try([&] { map._Poll(1000); });
    GenICam::gcstring_vector errors;
    Try([&] { map._ParseSwissKnifes(&errors); });
    for (INode* const node : nodes)
        AskValue(*node);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    Try([&] {
        CheckWriting(*KxGenApi::ReadDescription(std::string(content)));
        Use(content);
    });
    Try([&] {
        // Two halves as a description and what is injected into it.
        const size_t middle = content.find("</RegisterDescription>");
        if (middle != std::string_view::npos)
            KxGenApi::ReadDescription(std::string(content.substr(0, middle + 22)),
                                      std::string(content.substr(middle + 22)));
    });
    return 0;
}
