// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nodemap/CustomPropertyGridProperty_Typed_qt.h"

namespace KxApi
{

/// A text, in a line edit.
class CCustomPropertyGridProperty_String final : public CTextPropertyOf<GenApi::CStringPtr>
{
public:
    using CTextPropertyOf::CTextPropertyOf;

    QString GetInterfaceSpecificDescription() override;
    QString GetInterfaceSpecificDescriptionSampleCode() override;

protected:
    GenICam::gcstring Read() override { return Value()->GetValue(false, false); }
    void Write(const QString& strText) override { Value()->SetValue(ToGcstring(strText), true); }
};

} // namespace KxApi
