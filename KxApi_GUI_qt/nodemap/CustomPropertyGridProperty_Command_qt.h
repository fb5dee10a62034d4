// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nodemap/CustomPropertyGridProperty_Typed_qt.h"

class QPushButton;

namespace KxApi
{

/// A command, as a button; also when it can't be executed just now, as long as it is available.
class CCustomPropertyGridProperty_Command final : public CPropertyOf<GenApi::CCommandPtr>
{
public:
    using CPropertyOf::CPropertyOf;

    void OnClick();

    QString GetInterfaceSpecificDescription() override { return {}; }
    QString GetInterfaceSpecificDescriptionSampleCode() override;

protected:
    void MakeEditor() override;
    void ConnectEditor() override;
    void ShowValue(GenApi::EAccessMode) override {}
    void ApplyDisplayRule(GenApi::EAccessMode eMode) override;

private:
    QPushButton* m_pButton = nullptr;
};

} // namespace KxApi
