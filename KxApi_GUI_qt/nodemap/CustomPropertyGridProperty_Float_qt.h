// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nodemap/CustomPropertyGridProperty_Typed_qt.h"

class QDoubleSpinBox;
class QSlider;

namespace KxApi
{

/// A floating-point number, in a spin box with a slider of a hundred steps beside it.
class CCustomPropertyGridProperty_Float final : public CPropertyOf<GenApi::CFloatPtr>
{
public:
    CCustomPropertyGridProperty_Float(IKxNodeMapDisplayWndInside* pWnd, QWidget* pParent,
                                      GenApi::INode* pNode, IPropertyCtrlEvent* pEvent);

    /// Writes the value; what the writing raises is dropped.
    void SetValueForSlider(double dValue);
    void setValueForSpinbox(double dValue) { SetValueForSlider(dValue); }

    double GetValueForSlider();
    // The slider's range is the node's. In logarithmic representation it is what lies between half and double
    // the value last shown. What can't be read is 0.
    double GetMinForSlider();
    double GetMaxForSlider();
    /// The step of the spin box.
    double GetCurrentInc();

    void OnEditingFinished();
    void OnSpinboxValueChanged(double dValue);
    void OnSliderValueChanged(int nPosition);
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
    QString Text(double dValue) const;
    double ValueAt(int nPosition);
    void WriteMuted(double dValue);

    QDoubleSpinBox* m_pSpinBox = nullptr;
    QSlider* m_pSlider = nullptr;
    int m_nDecimals = 3;
    bool m_bSettingValue = false; // a write from here is under way
    double m_dLastValue = 0;      // as last shown
};

} // namespace KxApi
