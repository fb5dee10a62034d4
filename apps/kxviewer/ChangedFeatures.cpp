// SPDX-License-Identifier: Apache-2.0
#include "ChangedFeatures.h"

#include "FeatureText.h"

#include <GenApi/SelectorSet.h>

#include <QElapsedTimer>
#include <algorithm>

namespace
{

constexpr qint64 kSlice = 8;       // ms of reading in a turn of the event loop
constexpr int kLookInterval = 300; // ms

QString SelectorsOf(GenApi::INode& node)
{
    try {
        return QString::fromUtf8(GenApi::CSelectorSet(&node).ToString().c_str());
    } catch (const GenICam::GenericException&) {
        return {};
    }
}

bool IsWritableNow(GenApi::INode& node)
{
    try {
        return GenApi::IsWritable(&node);
    } catch (const GenICam::GenericException&) {
        return false; // the camera doesn't answer
    }
}

/// Features that a user sets: no commands, no categories, no mere registers.
bool IsSetting(GenApi::INode& node)
{
    switch (node.GetPrincipalInterfaceType()) {
    case GenApi::intfIInteger:
    case GenApi::intfIBoolean:
    case GenApi::intfIFloat:
    case GenApi::intfIString:
    case GenApi::intfIEnumeration:
        return node.IsFeature() && node.GetVisibility() <= GenApi::Guru;
    default:
        return false;
    }
}

} // namespace

struct ChangedFeatures::Notes
{
    std::mutex lock;                      // a leaf
    std::map<GenApi::INode*, bool> nodes; // and whether they could be written when they changed
};

ChangedFeatures::ChangedFeatures(GenApi::INodeMap& map, QObject* pParent)
    : QObject(pParent)
    , m_pNotes(std::make_shared<Notes>())
{
    GenApi::NodeList_t nodes;
    map.GetNodes(nodes);
    std::copy_if(nodes.rbegin(), nodes.rend(), std::back_inserter(m_vecToNote),
                 [](GenApi::INode* pNode) { return IsSetting(*pNode); });
    connect(&m_timerNote, &QTimer::timeout, this, &ChangedFeatures::NoteNext);
    connect(&m_timerLook, &QTimer::timeout, this, &ChangedFeatures::LookAtNotes);
    m_timerNote.start(0);
    m_timerLook.start(kLookInterval);
}

ChangedFeatures::~ChangedFeatures()
{
    for (const GenApi::CallbackHandleType hCallback : m_vecCallbacks)
        GenApi::Deregister(hCallback);
}

void ChangedFeatures::NoteNext()
{
    QElapsedTimer timer;
    timer.start();
    while (!m_vecToNote.empty() && timer.elapsed() < kSlice) {
        GenApi::INode* const pNode = m_vecToNote.back();
        m_vecToNote.pop_back();
        try {
            const GenApi::EAccessMode eAccess = pNode->GetAccessMode();
            if (eAccess == GenApi::NI)
                continue;
            const QString strValue = ValueText(*pNode);
            m_mapEntries[pNode] = {SelectorsOf(*pNode), strValue, strValue, GenApi::IsWritable(eAccess)};
            m_vecOrder.push_back(pNode);
            m_vecCallbacks.push_back(GenApi::Register(
                pNode,
                [pNotes = m_pNotes](GenApi::INode* pChanged) {
                    // Asked here: it may be locked again before the notes are looked at.
                    const bool bWritable = IsWritableNow(*pChanged);
                    const std::lock_guard lock(pNotes->lock);
                    bool& bNoted = pNotes->nodes[pChanged];
                    bNoted = bNoted || bWritable;
                },
                GenApi::cbPostOutsideLock));
        } catch (const GenICam::GenericException&)
        { // NOLINT(bugprone-empty-catch): it has no value to go back to
        }
    }
    if (m_vecToNote.empty())
        m_timerNote.stop();
}

void ChangedFeatures::LookAtNotes()
{
    std::map<GenApi::INode*, bool> nodes;
    {
        const std::lock_guard lock(m_pNotes->lock);
        nodes.swap(m_pNotes->nodes);
    }
    if (nodes.empty())
        return;
    for (const auto& [pNode, bWritable] : nodes)
        Look(pNode, bWritable);
    emit Changed();
}

void ChangedFeatures::Look(GenApi::INode* pNode, bool bWasWritable)
{
    Entry& entry = m_mapEntries[pNode];
    entry.bSettable = entry.bSettable || bWasWritable;
    const QString strNow = ValueText(*pNode);
    if (strNow.isEmpty() || SelectorsOf(*pNode) != entry.strSelectors)
        return; // not what was noted
    if (entry.strBefore.isEmpty())
        entry.strBefore = strNow; // it couldn't be read before
    entry.strNow = strNow;
}

std::vector<ChangedFeatures::Change> ChangedFeatures::GetChanges() const
{
    std::vector<Change> vecChanges;
    for (GenApi::INode* const pNode : m_vecOrder) {
        const Entry& entry = m_mapEntries.at(pNode);
        if (entry.bSettable && entry.strNow != entry.strBefore)
            vecChanges.push_back({pNode, entry.strBefore, entry.strNow, !IsWritableNow(*pNode)});
    }
    return vecChanges;
}

void ChangedFeatures::Undo(GenApi::INode& node)
{
    const auto found = m_mapEntries.find(&node);
    if (found == m_mapEntries.end())
        return;
    if (SelectorsOf(node) != found->second.strSelectors)
        throw RUNTIME_EXCEPTION("%s was changed with the selectors at %s; choose these first",
                                node.GetName().c_str(), found->second.strSelectors.toUtf8().constData());
    GenApi::CValuePtr(&node)->FromString(found->second.strBefore.toUtf8().constData());
}
