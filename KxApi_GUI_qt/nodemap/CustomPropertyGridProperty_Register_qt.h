// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nodemap/CustomPropertyGridProperty_Typed_qt.h"

namespace KxApi
{

/// The first bytes of a register, as text.
class CCustomPropertyGridProperty_Register final : public CPropertyOf<GenApi::CRegisterPtr>
{
public:
    using CPropertyOf::CPropertyOf;

    QString GetInterfaceSpecificDescription() override;
    QString GetInterfaceSpecificDescriptionSampleCode() override;

protected:
    void MakeEditor() override { Label().show(); }
    void ShowValue(GenApi::EAccessMode eMode) override;
    void ApplyDisplayRule(GenApi::EAccessMode eMode) override;
};

} // namespace KxApi
