// SPDX-License-Identifier: Apache-2.0
// Which features have another value than when the camera was connected.
#pragma once

#include <GenApi/GenApi.h>

#include <QObject>
#include <QString>
#include <QTimer>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

/// Notes the values of all features that can be set, in slices of the event loop, and then looks at those
/// again that tell of a change. What can never be written, such as a temperature, is left out. A feature with
/// selectors is compared while they select what was noted. GUI thread.
class ChangedFeatures : public QObject
{
    Q_OBJECT

public:
    struct Change
    {
        GenApi::INode* pNode;
        QString strBefore;
        QString strNow;
        bool bLocked; // it can't be taken back now, such as the image size while the camera acquires
    };

    /// The node map has to outlive this.
    ChangedFeatures(GenApi::INodeMap& map, QObject* pParent);
    ~ChangedFeatures() override;

    /// In the order of the node map.
    std::vector<Change> GetChanges() const;
    /// Sets the feature to what it was. Raises what the node raises.
    void Undo(GenApi::INode& node);

signals:
    void Changed();

private:
    struct Entry
    {
        QString strSelectors;
        QString strBefore;
        QString strNow;
        bool bSettable = false; // it could be written once, though it may be locked now
    };
    /// What callbacks leave a note in; they may run in any thread, and later than this lives.
    struct Notes;

    void NoteNext();
    void LookAtNotes();
    void Look(GenApi::INode* pNode, bool bWasWritable);

    std::vector<GenApi::INode*> m_vecToNote; // backwards
    std::map<GenApi::INode*, Entry> m_mapEntries;
    std::vector<GenApi::INode*> m_vecOrder;
    std::vector<GenApi::CallbackHandleType> m_vecCallbacks;
    std::shared_ptr<Notes> m_pNotes;
    QTimer m_timerNote;
    QTimer m_timerLook;
};
