// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nodemap/CustomPropertyGridProperty_Typed_qt.h"

#include <optional>

class QSlider;
class QSpinBox;

namespace KxApi
{

/// An integer, in a spin box with a slider beside it, or in a line edit.
class CCustomPropertyGridProperty_Integer final : public CPropertyOf<GenApi::CIntegerPtr>
{
public:
    /// @param bUseLineEdit without a value, the node's maximum decides when the editor is built: spin boxes
    /// hold 32 bits.
    CCustomPropertyGridProperty_Integer(IKxNodeMapDisplayWndInside* pWnd, QWidget* pParent,
                                        GenApi::INode* pNode, IPropertyCtrlEvent* pEvent,
                                        std::optional<bool> bUseLineEdit);

    /// The number that a text stands for in the node's representation, 0 for none.
    int64_t StringToIntegerValue(const QString& strText);
    /// Writes the value; by whole increments, measured from the present value and rounded away from it.
    void setValueForSpinbox(int64_t nValue);

    // The slider's range is the node's. In logarithmic representation it is what lies between half and double
    // the value last shown. What can't be read is 0.
    int64_t GetValueForSlider();
    int64_t GetMinForSlider();
    int64_t GetMaxForSlider();

    void OnEditingFinished();
    /// These raise what the writing raises.
    void OnSliderSpinboxValueChanged(int nValue);
    void OnSliderReleased();

    void UpdateDisplayValue() override;
    QString GetInterfaceSpecificDescription() override;
    QString GetInterfaceSpecificDescriptionSampleCode() override;

protected:
    void MakeEditor() override;
    void ConnectEditor() override;
    void ShowValue(GenApi::EAccessMode eMode) override;

private:
    bool IsLogarithmic() { return Value()->GetRepresentation() == GenApi::Logarithmic; }
    void FillSpinBox();
    /// The value for readers, behind the number itself.
    QString ValueSuffix(int64_t nValue);

    std::optional<bool> m_bUseLineEdit;
    QSpinBox* m_pSpinBox = nullptr; // these two, or the line edit
    QSlider* m_pSlider = nullptr;
    QLineEdit* m_pLineEdit = nullptr;
    bool m_bSettingValue = false; // a write from here is under way
    int64_t m_nLastValue = 0;     // as last shown
};

} // namespace KxApi
