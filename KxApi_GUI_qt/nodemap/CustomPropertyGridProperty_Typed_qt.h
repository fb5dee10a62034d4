// SPDX-License-Identifier: Apache-2.0
// What properties with an interface of their own have in common.
#pragma once

#include "nodemap/CustomPropertyGridProperty_Base_qt.h"

#include <QLineEdit>
#include <QSignalBlocker>

namespace KxApi
{

/// A property of a node with the interface that the smart pointer `TPtr` finds.
template <class TPtr>
class CPropertyOf : public CCustomPropertyGridProperty_Base
{
public:
    CPropertyOf(IKxNodeMapDisplayWndInside* pWnd, QWidget* pParent, GenApi::INode* pNode,
                IPropertyCtrlEvent* pEvent)
        : CCustomPropertyGridProperty_Base(pWnd, pParent, pNode, pEvent)
        , m_pValue(pNode)
    {
        RegisterGenApiCallback();
    }

protected:
    /// The interface; null when the node hasn't it, and after Detach, which may come within a write.
    TPtr& Value()
    {
        if (!m_pNode)
            m_pValue = TPtr();
        return m_pValue;
    }

private:
    TPtr m_pValue;
};

/// A property that is edited as text, and written when the editing ends.
template <class TPtr>
class CTextPropertyOf : public CPropertyOf<TPtr>
{
public:
    using CPropertyOf<TPtr>::CPropertyOf;

    void OnEditingFinished()
    {
        Dropping([this] {
            if (this->IsNodeWritable() && this->Value())
                Write(m_pLineEdit->text());
        });
    }

protected:
    virtual GenICam::gcstring Read() = 0;
    virtual void Write(const QString& strText) = 0;

    void MakeEditor() override
    {
        m_pLineEdit = new QLineEdit(this);
        this->AddEditor(*m_pLineEdit);
    }
    void ConnectEditor() override
    {
        this->ConnectTo(m_pLineEdit, &QLineEdit::editingFinished, [this] { OnEditingFinished(); });
    }
    void ShowValue(GenApi::EAccessMode eMode) override
    {
        if (!GenApi::IsReadable(eMode))
            return;
        const QString strText = ToQString(Read());
        if (GenApi::IsWritable(eMode))
            m_pLineEdit->setText(strText);
        else
            this->Label().setText(strText);
    }

private:
    QLineEdit* m_pLineEdit = nullptr;
};

} // namespace KxApi
