// SPDX-License-Identifier: Apache-2.0
// Changes of nodes, brought to the GUI thread.
#pragma once

#include <GenApi/GenApi.h>

#include <QObject>
#include <functional>
#include <memory>
#include <vector>

/// Listens to nodes and calls back in the GUI thread, once for all changes that came meanwhile. Nodes may
/// change in any thread, which isn't held up. GUI thread; goes before the node maps.
class FeatureNotes : public QObject
{
public:
    /// @param changed is called in the GUI thread with each node that has changed
    explicit FeatureNotes(std::function<void(GenApi::INode&)> changed);
    ~FeatureNotes() override;

    void Listen(GenApi::INode& node);

private:
    struct Shared;

    void Deliver();

    const std::function<void(GenApi::INode&)> m_changed;
    const std::shared_ptr<Shared> m_pShared; // the callbacks', which may run while this goes
    std::vector<GenApi::CallbackHandleType> m_vecCallbacks;
};
