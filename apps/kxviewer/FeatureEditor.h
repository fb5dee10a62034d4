// SPDX-License-Identifier: Apache-2.0
// A control for one feature.
#pragma once

#include <GenApi/GenApi.h>

#include <QWidget>
#include <functional>
#include <memory>

/// Shows a feature and sets it: a slider with a number, a choice, or a switch, as the feature's type asks
/// for. Limits and entries are those of the moment. GUI thread; goes before the node map.
class FeatureEditor : public QWidget
{
    Q_OBJECT

public:
    /// @return null for a type that has no control
    static FeatureEditor* Make(GenApi::INode& node, const QString& strTitle, QWidget* pParent);

    GenApi::INode& Node() const { return m_node; }

    /// Reads the feature anew; what can't be read is shown disabled.
    void Refresh();

signals:
    /// The user's value wasn't taken; the text tells why.
    void Refused(const QString& strText);

protected:
    FeatureEditor(GenApi::INode& node, QWidget* pParent)
        : QWidget(pParent)
        , m_node(node)
    {}
    /// Brings the controls up to date, without a signal to anybody. May raise.
    virtual void Show() = 0;
    /// Sets the feature and shows what became of it.
    void Write(const std::function<void()>& set);
    bool IsShowing() const { return m_bShowing; }

private:
    GenApi::INode& m_node;
    bool m_bShowing = false;
};
