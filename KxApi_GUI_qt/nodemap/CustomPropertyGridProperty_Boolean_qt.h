// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nodemap/CustomPropertyGridProperty_Typed_qt.h"

class QComboBox;

namespace KxApi
{

/// A switch, in a combo box with its two states.
class CCustomPropertyGridProperty_Boolean final : public CPropertyOf<GenApi::CBooleanPtr>
{
public:
    using CPropertyOf::CPropertyOf;

    void OnCurrentIndexChanged(int nIndex);

    QString GetInterfaceSpecificDescription() override;
    QString GetInterfaceSpecificDescriptionSampleCode() override;

protected:
    void MakeEditor() override;
    void ConnectEditor() override;
    void ShowValue(GenApi::EAccessMode eMode) override;

private:
    QComboBox* m_pComboBox = nullptr;
};

} // namespace KxApi
