// SPDX-License-Identifier: Apache-2.0
#include "nodemap/CustomPropertyGridProperty_String_qt.h"

#include "nodemap/NodePage_qt.h"
#include "nodemap/SampleCode_qt.h"

namespace KxApi
{

QString CCustomPropertyGridProperty_String::GetInterfaceSpecificDescription()
{
    return Fill("<tr><td width=\"30%\">Value</td><td width=\"70%\">%1</td></tr><tr><td>Max "
                "Length</td><td>%2</td></tr>",
                {HtmlOf(Value()->GetValue()), QString::number(Value()->GetMaxLength())});
}

QString CCustomPropertyGridProperty_String::GetInterfaceSpecificDescriptionSampleCode()
{
    return SampleCode(ESampleCode::String, IsNodeWritable());
}

} // namespace KxApi
