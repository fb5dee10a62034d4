// SPDX-License-Identifier: Apache-2.0
#include "runtime/FileContent.h"
#include "runtime/ModelCache.h"
#include "runtime/NodeMap.h"
#include "runtime/PropertyTexts.h"

#include <Base/GCException.h>
#include <GenApi/NodeMapFactory.h>

#include <string>
#include <vector>

namespace GenApi
{
namespace
{

using KxGenApi::ContentType;
using KxGenApi::Model;
using gcstring = GenICam::gcstring;

ContentType TypeOf(EContentType_t type)
{
    return type == ContentType_ZippedXml ? ContentType::ZippedXml : ContentType::Xml;
}

std::string_view ViewOf(const gcstring& text) { return {text.c_str(), text.size()}; }

gcstring TextOf(const std::string& text) { return gcstring(text.data(), text.size()); }

[[noreturn]] void RaiseEmpty() { throw LOGICAL_ERROR_EXCEPTION("The factory holds no description"); }

} // namespace

struct CNodeMapFactory::State
{
    gcstring fileName;   // empty for content that was in memory
    std::string content; // empty while the file has not been read, and once it has been let go
    ContentType type = ContentType::Xml;
    ECacheUsage_t usage = CacheUsage_Automatic;
    std::vector<std::string> injections;
    std::shared_ptr<Model> model; // once loaded
    bool isPreprocessed = false;
    bool isReleased = false;

    const std::string& Content()
    {
        if (content.empty() && !fileName.empty() && !isReleased)
            content = KxGenApi::ReadFile(fileName);
        return content;
    }

    void Read()
    {
        if (injections.empty()) {
            model = KxGenApi::LoadModel(Content(), type, usage);
            return;
        }
        std::shared_ptr<const KxGenApi::Description> description;
        for (const std::string& injected : injections)
            description = description ? KxGenApi::ReadDescription(KxGenApi::WriteXml(*description), injected)
                                      : KxGenApi::ReadDescription(Content(), injected, type);
        model = std::make_shared<Model>(std::move(description));
    }

    void Load()
    {
        if (model)
            return;
        if (fileName.empty())
            Read();
        else
            KxGenApi::NameSource(fileName, [&] { Read(); });
    }
};

CNodeMapFactory::CNodeMapFactory() = default;
CNodeMapFactory::CNodeMapFactory(const CNodeMapFactory&) = default;
CNodeMapFactory& CNodeMapFactory::operator=(const CNodeMapFactory&) = default;
CNodeMapFactory::~CNodeMapFactory() = default;

CNodeMapFactory::CNodeMapFactory(EContentType_t ContentType, const gcstring& FileName,
                                 ECacheUsage_t CacheUsage, bool)
    : m_state(std::make_shared<State>())
{
    if (FileName.empty())
        throw INVALID_ARGUMENT_EXCEPTION("The name of the description file is empty");
    m_state->fileName = FileName;
    m_state->type = TypeOf(ContentType);
    m_state->usage = CacheUsage;
}

CNodeMapFactory::CNodeMapFactory(EContentType_t ContentType, const void* pData, size_t DataSize,
                                 ECacheUsage_t CacheUsage, bool)
    : m_state(std::make_shared<State>())
{
    if (pData == nullptr || DataSize == 0)
        throw INVALID_ARGUMENT_EXCEPTION("The description is empty");
    m_state->content.assign(static_cast<const char*>(pData), DataSize);
    m_state->type = TypeOf(ContentType);
    m_state->usage = CacheUsage;
}

CNodeMapFactory::CNodeMapFactory(const gcstring& XmlData, ECacheUsage_t CacheUsage, bool)
    : CNodeMapFactory(ContentType_Xml, XmlData.c_str(), XmlData.size(), CacheUsage)
{}

CNodeMapFactory::State& CNodeMapFactory::Loaded()
{
    if (IsEmpty())
        RaiseEmpty();
    m_state->Load();
    return *m_state;
}

const CNodeMapFactory::State& CNodeMapFactory::Preprocessed() const
{
    if (!IsPreprocessed())
        throw LOGICAL_ERROR_EXCEPTION("The factory's description has not been preprocessed");
    return *m_state;
}

bool CNodeMapFactory::IsEmpty() const { return m_state == nullptr; }

bool CNodeMapFactory::IsLoaded() const { return !IsEmpty() && m_state->model != nullptr; }

bool CNodeMapFactory::IsPreprocessed() const { return IsLoaded() && m_state->isPreprocessed; }

void CNodeMapFactory::LoadAndInject() { Loaded(); }

void CNodeMapFactory::Preprocess() { Loaded().isPreprocessed = true; }

void CNodeMapFactory::AddInjectionData(const gcstring& XmlText)
{
    if (IsEmpty())
        RaiseEmpty();
    if (m_state->Content().empty())
        throw RUNTIME_EXCEPTION("There is no description text into which nodes can be injected");
    auto injected = std::make_shared<State>(*m_state); // copies of the factory keep what they have
    injected->injections.emplace_back(XmlText.c_str(), XmlText.size());
    injected->model.reset();
    injected->isPreprocessed = false;
    m_state = std::move(injected);
}

void CNodeMapFactory::AddInjectionData(CNodeMapFactory& InjectionData)
{
    if (InjectionData.IsEmpty())
        return;
    if (InjectionData.IsPreprocessed())
        throw RUNTIME_EXCEPTION("A factory whose description has been preprocessed can't be injected");
    State& injected = *InjectionData.m_state;
    if (injected.type == ContentType::Xml && injected.injections.empty())
        AddInjectionData(TextOf(injected.Content()));
    else
        AddInjectionData(TextOf(KxGenApi::WriteXml(*InjectionData.Loaded().model->description)));
}

INodeMap* CNodeMapFactory::Create(CLock* pLock, const gcstring& DeviceName, bool release)
{
    Preprocess();
    if (release)
        ReleaseCameraDescriptionFileData();
    return new KxGenApi::NodeMap(m_state->model, DeviceName, pLock);
}

INodeMap* CNodeMapFactory::CreateNodeMap(const gcstring& DeviceName, bool ReleaseCameraDescriptionFileData)
{
    return Create(nullptr, DeviceName, ReleaseCameraDescriptionFileData);
}

INodeMap* CNodeMapFactory::CreateNodeMap(CLock& UserProvidedLock, const gcstring& DeviceName,
                                         bool ReleaseCameraDescriptionFileData)
{
    return Create(&UserProvidedLock, DeviceName, ReleaseCameraDescriptionFileData);
}

INodeMap* CNodeMapFactory::CreateEmptyNodeMap()
{
    return new KxGenApi::NodeMap(std::make_shared<Model>(KxGenApi::EmptyDescription()), "Device");
}

CNodeMapFactory CNodeMapFactory::ExtractSubtree(const gcstring& SubTreeRootNodeName, bool doRenameToRoot)
{
    const KxGenApi::Description& description = *Loaded().model->description;
    const KxGenApi::NodeIndex root = description.FindNode(ViewOf(SubTreeRootNodeName));
    if (root == KxGenApi::kNoNode)
        throw INVALID_ARGUMENT_EXCEPTION("There is no node '%s' to extract", SubTreeRootNodeName.c_str());
    const bool rename = doRenameToRoot && SubTreeRootNodeName != "Root";
    if (rename && description.Node(root).type != KxGenApi::NodeType::Category)
        throw INVALID_ARGUMENT_EXCEPTION("Node '%s' can't be called Root, for it is no category",
                                         SubTreeRootNodeName.c_str());
    CNodeMapFactory subtree;
    subtree.m_state = std::make_shared<State>();
    subtree.m_state->model = std::make_shared<Model>(KxGenApi::ExtractSubtree(description, root, rename));
    subtree.m_state->content = KxGenApi::WriteXml(*subtree.m_state->model->description);
    return subtree;
}

gcstring CNodeMapFactory::ToXml() const
{
    return TextOf(KxGenApi::WriteXml(*Preprocessed().model->description));
}

gcstring CNodeMapFactory::ToString() const
{
    const KxGenApi::NodeMap map(Preprocessed().model, "Device");
    std::string text;
    for (KxGenApi::NodeIndex i = 0; i < map.Described().NodeCount(); ++i) {
        const KxGenApi::Node& node = map.NodeAt(i);
        text += node.NameText();
        text += '\n';
        for (const std::string& name : KxGenApi::PropertyNamesOf(node)) {
            KxGenApi::PropertyText property;
            KxGenApi::FindPropertyText(node, name, property);
            text += "    " + name + " = " + property.value +
                    (property.attribute.empty() ? "" : " [" + property.attribute + "]") + "\n";
        }
    }
    return TextOf(text);
}

void CNodeMapFactory::GetNodeStatistics(NodeStatistics_t& Statistics)
{
    const KxGenApi::Description& description = *Loaded().model->description;
    Statistics = {description.NodeCount() + 1, 0, 0, 0};
    for (KxGenApi::NodeIndex i = 0; i < description.NodeCount(); ++i) {
        for (const KxGenApi::Property& property : description.Properties(i)) {
            ++Statistics.NumProperties;
            ++(property.node != KxGenApi::kNoNode ? Statistics.NumLinks : Statistics.NumStrings);
        }
    }
}

const gcstring CNodeMapFactory::ApplyStyleSheet(const gcstring& StyleSheetFileName)
{
    throw RUNTIME_EXCEPTION("%s: style sheets are not supported", StyleSheetFileName.c_str());
}

void CNodeMapFactory::ReleaseCameraDescriptionFileData()
{
    if (IsEmpty())
        return;
    std::string().swap(m_state->content);
    m_state->isReleased = true;
}

bool CNodeMapFactory::IsCameraDescriptionFileDataReleased() const
{
    return !IsEmpty() && m_state->isReleased;
}

void CNodeMapFactory::GetSupportedSchemaVersions(GenICam::gcstring_vector& SchemaVersions) const
{
    SchemaVersions.clear();
    SchemaVersions.push_back("1.0");
    SchemaVersions.push_back("1.1");
}

bool CNodeMapFactory::ClearCache() { return KxGenApi::ClearModelCache(); }

} // namespace GenApi
