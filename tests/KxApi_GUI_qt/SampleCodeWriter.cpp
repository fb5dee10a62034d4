// SPDX-License-Identifier: Apache-2.0
// Writes the sample code of the node-map window's pages as a source file: `KxSampleCodeWriter FILE`.
#include "SampleCodeMap.h"
#include "TestMap.h"
#include "nodemap/CustomPropertyGridProperty_Base_qt.h"
#include "nodemap/PropertyTable_qt.h"

#include <QApplication>
#include <QTextDocumentFragment>
#include <cstdio>
#include <fstream>
#include <memory>

namespace
{

// These two lines of the pages don't compile as they stand, on purpose, and a third leaves its buffer behind.
QString Mended(QString strCode)
{
    for (const char* const szPointer : {"pIInteger", "pIFloat"})
        strCode.replace(QString("ERepresentation eRepresentation = %1->GetIncMode()").arg(szPointer),
                        QString("ERepresentation eRepresentation = %1->GetRepresentation()").arg(szPointer));
    if (strCode.contains("*pBuffer = new"))
        strCode += "\ndelete[] pBuffer;";
    return strCode;
}

QString CodeOf(GenApi::INode& node)
{
    const std::unique_ptr<KxApi::CCustomPropertyGridProperty_Base> pProperty(
        KxApi::MakeProperty(nullptr, nullptr, &node, nullptr));
    QString strSelectors;
    KxApi::CCustomPropertyGridProperty_Base::AddSelectorDescription(strSelectors, &node, true);
    const QString strPage = "<pre>" + strSelectors + "</pre>" +
                            pProperty->GetDescription_GetNodeAndCheckAccess() +
                            pProperty->GetInterfaceSpecificDescriptionSampleCode();
    return Mended(QTextDocumentFragment::fromHtml(strPage).toPlainText());
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (argc != 2)
        return 2;
    try {
        const KxTest::TestMap map(KxTest::kSampleMap);
        std::ofstream file(argv[1]);
        file << "#include <GenApi/GenApi.h>\nusing namespace GenApi;\n";
        std::string calls;
        const auto add = [&](const char* szName) {
            file << "static void Sample" << szName << "(GenApi::INodeMap* pINodeMap)\n{\n"
                 << CodeOf(map.Get(szName)).toStdString() << "\n}\n";
            calls += std::string("    Sample") + szName + "(pINodeMap);\n";
        };
        add("Root");
        for (const char* const szName : KxTest::kSampleNodes)
            add(szName);
        file << "void RunSampleCode(GenApi::INodeMap* pINodeMap)\n{\n" << calls << "}\n";
        return file ? 0 : 1;
    } catch (const GenICam::GenericException& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
}
