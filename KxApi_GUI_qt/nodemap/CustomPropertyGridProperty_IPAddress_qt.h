// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nodemap/CustomPropertyGridProperty_Typed_qt.h"

namespace KxApi
{

/// An integer that is an IPv4 address, in a line edit.
class CCustomPropertyGridProperty_IPAddress final : public CTextPropertyOf<GenApi::CIntegerPtr>
{
public:
    using CTextPropertyOf::CTextPropertyOf;

    /// The address with its first octet in the highest byte; 0xFFFFFFFF for what is none.
    static uint32_t StringToIntegerValue(const QString& strText);

    QString GetInterfaceSpecificDescription() override;
    QString GetInterfaceSpecificDescriptionSampleCode() override;

protected:
    GenICam::gcstring Read() override { return Value()->ToString(false, false); }
    void Write(const QString& strText) override { Value()->SetValue(StringToIntegerValue(strText), true); }
};

} // namespace KxApi
