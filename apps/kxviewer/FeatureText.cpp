// SPDX-License-Identifier: Apache-2.0
#include "FeatureText.h"

namespace
{

QString NameOf(GenApi::INode& node) { return QString::fromUtf8(node.GetName().c_str()); }

QString ShellQuoted(QString strText) { return "'" + strText.replace("'", "'\\''") + "'"; }

QString CppQuoted(const QString& strText)
{
    QString strQuoted = "\"";
    for (const char ch : strText.toUtf8()) {
        const auto nByte = static_cast<unsigned char>(ch);
        if (ch == '"' || ch == '\\')
            strQuoted += QString("\\") + ch;
        else if (nByte < 0x20 || nByte > 0x7E)
            strQuoted += QString::asprintf("\\%03o", nByte);
        else
            strQuoted += ch;
    }
    return strQuoted + "\"";
}

struct CKind
{
    GenApi::EInterfaceType eType;
    const char* szPointer;
    const char* szCall; // %1 is the value, and %2 the value in quotes
};

constexpr CKind kKinds[] = {
    {GenApi::intfIInteger, "CIntegerPtr", "SetValue(%1)"},
    {GenApi::intfIBoolean, "CBooleanPtr", "SetValue(%1)"},
    {GenApi::intfIFloat, "CFloatPtr", "SetValue(%1)"},
    {GenApi::intfIString, "CStringPtr", "SetValue(%2)"},
    {GenApi::intfICommand, "CCommandPtr", "Execute()"},
};

QString CppValue(GenApi::INode& node, const QString& strValue)
{
    // In decimal, whatever the representation.
    if (auto* const pInteger = dynamic_cast<GenApi::IInteger*>(&node))
        return QString::number(pInteger->GetValue());
    if (dynamic_cast<GenApi::IBoolean*>(&node))
        return strValue == "1" || strValue == "true" ? "true" : "false";
    return strValue;
}

} // namespace

QString ValueText(GenApi::INode& node)
{
    try {
        auto* const pValue = dynamic_cast<GenApi::IValue*>(&node);
        if (pValue && GenApi::IsReadable(&node) && !dynamic_cast<GenApi::ICommand*>(&node))
            return QString::fromUtf8(pValue->ToString().c_str());
    } catch (const GenICam::GenericException&) { // NOLINT(bugprone-empty-catch): then there is none
    }
    return {};
}

QString SetLine(GenApi::INode& node, const QString& strCamera, const QString& strModule)
{
    QString strLine = "kx set " + (strCamera.isEmpty() ? "CAMERA" : ShellQuoted(strCamera));
    if (!strModule.isEmpty() && strModule != "remote")
        strLine += " --module " + strModule;
    if (dynamic_cast<GenApi::ICommand*>(&node))
        return strLine + " " + NameOf(node);
    return strLine + " " + ShellQuoted(NameOf(node) + "=" + ValueText(node));
}

QString CppLine(GenApi::INode& node)
{
    const QString strValue = ValueText(node);
    const QString strNode = "(pINodeMap->GetNode(" + CppQuoted(NameOf(node)) + "))->";
    try {
        for (const CKind& kind : kKinds) {
            if (kind.eType == node.GetPrincipalInterfaceType())
                return QString("GenApi::") + kind.szPointer + strNode +
                       QString(kind.szCall)
                           .replace("%1", CppValue(node, strValue))
                           .replace("%2", CppQuoted(strValue)) +
                       ";";
        }
    } catch (const GenICam::GenericException&) { // NOLINT(bugprone-empty-catch): as a text then
    }
    return "GenApi::CValuePtr" + strNode + "FromString(" + CppQuoted(strValue) + ");";
}
