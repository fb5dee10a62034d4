// SPDX-License-Identifier: Apache-2.0
#include "FakePort.h"
#include "FakeProducer.h"
#include "ImageTestSupport.h"
#include "Outline.h"
#include "ZipArchive.h"

#include <GenApi/GenApi.h>
#include <KxSDKCommon/KxApi_Exception.h>
#include <KxSDKCommon/KxXMLFile.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

using namespace KxApi;
using GenICam::RuntimeException;
using KxTest::FakePort;
using KxTest::FakeProducer;
using KxTest::Raised;

namespace
{

const std::string kXml = KxTest::DescriptionAsXml(R"(
    Category Root { pFeature Width; pFeature ChunkRoot }
    Category ChunkRoot { pFeature ChunkGain; pFeature TLParamsLock } Integer TLParamsLock { Value 0 }
    IntReg Width { at 0x100 4 RW; Little } IntReg ChunkGain { at 0x200 4 RO; Little })");

class XMLFileTest : public testing::Test
{
protected:
    void Create(const char* szPortName = "Device")
    {
        file.CreateNodeMap(CKxXMLFile::GetURL(&producer.lib, producer.Port()), &port, szPortName);
    }
    GenApi::CIntegerPtr Integer(GenApi::INodeMap* pNodeMap, const char* szName)
    {
        return pNodeMap->GetNode(szName);
    }
    std::string Saved()
    {
        // The tests run in processes beside each other: a name of its own for each.
        const std::string path = testing::TempDir() + "kxxmlfile-" + std::to_string(getpid());
        file.SaveToFile(path.c_str());
        std::ifstream stream(path, std::ios::binary);
        std::string content{std::istreambuf_iterator<char>(stream), {}};
        std::filesystem::remove(path);
        return content;
    }

    FakeProducer producer;
    FakePort port;
    CKxXMLFile file{&producer.lib, producer.Port(), GenApi::RW, "Camera"};
};

TEST_F(XMLFileTest, UrlsAreTakenApart)
{
    EXPECT_STREQ(CKxXMLFile::ParseURLFilePath("local:a.zip;10000;2000").c_str(), "a.zip");
    EXPECT_EQ(CKxXMLFile::ParseURLLocalAddress("local:a.zip;10000;2000"), 0x10000u);
    EXPECT_EQ(CKxXMLFile::ParseURLLocalLength("local:a.zip;10000;2000"), 0x2000u);
    EXPECT_EQ(CKxXMLFile::ParseURLLocalAddress("local:a.zip;0xBF;1F?SchemaVersion=1.1.0"), 0xBFu);
    EXPECT_EQ(CKxXMLFile::ParseURLLocalLength("local:a.zip;0xBF;1F?SchemaVersion=1.1.0"), 0x1Fu);
    const std::pair<const char*, const char*> paths[] = {
        {"a.xml;1;2", "a.xml"}, {"local:a.xml", "a.xml"},
        {";local:a.xml", ""},   {"", ""},
        {"a;b:c", ""},          {"file:c:\\x", "c:\\x"},
        {"local:", ""},         {"local:///d/a.xml;1;2", "///d/a.xml"}};
    for (const auto& [szURL, szPath] : paths)
        EXPECT_STREQ(CKxXMLFile::ParseURLFilePath(szURL).c_str(), szPath) << szURL;
    for (const char* const szURL : {"", "local:a", "local:a;;", "local:a;zz;qq"}) {
        EXPECT_EQ(CKxXMLFile::ParseURLLocalAddress(szURL), 0u) << szURL;
        EXPECT_EQ(CKxXMLFile::ParseURLLocalLength(szURL), 0u) << szURL;
    }
    const std::pair<const char*, int> locations[] = {{"LOCAL:x.xml;0;10", 0},
                                                     {"Http://host/x.xml", 1},
                                                     {"FILE:x.xml", 2},
                                                     {"ftp:x", 0},
                                                     {"", 0},
                                                     {"htt", 0}};
    for (const auto& [szURL, nLocation] : locations)
        EXPECT_EQ(CKxXMLFile::ParseURLLocation(szURL), nLocation) << szURL;
    EXPECT_STREQ(CKxXMLFile::ParseURLFileName("c:\\dir\\a.xml").c_str(), "a.xml");
    EXPECT_STREQ(CKxXMLFile::ParseURLFileName("/dir/a.xml").c_str(), "/dir/a.xml");
    EXPECT_STREQ(CKxXMLFile::ParseURLFileName("dir\\").c_str(), "");
    for (const char* const szName : {"a.zip", "A.ZIP", "unzip", "zip"})
        EXPECT_TRUE(CKxXMLFile::IsZipFileName(szName)) << szName;
    for (const char* const szName : {"a.xml", "a.zip ", "ip", ""})
        EXPECT_FALSE(CKxXMLFile::IsZipFileName(szName)) << szName;
}

TEST_F(XMLFileTest, PlainFileBecomesAConnectedMap)
{
    producer.Publish("dir\\fake.xml", kXml + std::string(5, '\0'));
    EXPECT_EQ(file.GetNodeMap(), nullptr);
    Create();
    ASSERT_NE(file.GetNodeMap(), nullptr);
    EXPECT_STREQ(file.GetNodeMap()->GetDeviceName().c_str(), "Camera");
    Integer(file.GetNodeMap(), "Width")->SetValue(640);
    EXPECT_EQ(port.Peek(0x100, 4), (FakePort::Bytes{0x80, 2, 0, 0}));
    EXPECT_STREQ(file.GetXMLFileName().c_str(), "fake.xml");
    EXPECT_EQ(Saved(), kXml) << "without the zeros";

    GenApi::INodeMap* const pFirst = file.GetNodeMap();
    producer.url = "http://elsewhere";
    Create();
    EXPECT_EQ(file.GetNodeMap(), pFirst);
    EXPECT_EQ(producer.nReads, 1);
}

TEST_F(XMLFileTest, ZippedFileIsUnpackedForTheMapAndSavedAsItIs)
{
    const std::string archive = KxTest::Zip({{"fake.xml", kXml}});
    producer.Publish("fake.ZIP", archive);
    Create();
    EXPECT_TRUE(GenApi::IsWritable(Integer(file.GetNodeMap(), "Width")));
    EXPECT_EQ(Saved(), archive) << "the zeros at its end belong to it";
}

TEST_F(XMLFileTest, FileThatCannotBeHadIsToldAndCanBeTriedAgain)
{
    producer.Publish("fake.xml", kXml);
    EXPECT_EQ(
        Raised<GenICam::InvalidArgumentException>([&] { file.CreateNodeMap("http:x", &port, "Device"); }),
        "URL location 1 is not supported.");
    EXPECT_EQ(
        Raised<GenICam::InvalidArgumentException>([&] { file.CreateNodeMap("File:x", &port, "Device"); }),
        "URL location 2 is not supported.");
    EXPECT_EQ(Raised<GenICam::OutOfRangeException>([&] {
                  file.CreateNodeMap("local:x.xml;0;FFFFFFFFFFFFFFFF", &port, "Device");
              }).substr(0, 23),
              "Length of the XML file ");
    producer.nReadError = GenTL::GC_ERR_IO;
    producer.nLastError = GenTL::GC_ERR_IO;
    producer.lastErrorText = "cable";
    try {
        Create();
        ADD_FAILURE();
    } catch (const CKxGenTLErrorException& e) {
        EXPECT_EQ(e.GetError(), GenTL::GC_ERR_IO);
        EXPECT_STREQ(e.GetFunctionName().c_str(), "GCReadPort");
        const std::string text = e.GetDescription();
        EXPECT_EQ(text.find(std::to_string(GenTL::GC_ERR_IO) + " = GCReadPort(0x"), 0u) << text;
        EXPECT_NE(text.find(", 65536, 0x"), std::string::npos) << text;
        EXPECT_EQ(text.substr(text.size() - 6), " cable");
        EXPECT_STREQ(e.GetSourceFileName(), "KxSDKCommon/KxXMLFile");
    }
    producer.nReadError = GenTL::GC_ERR_SUCCESS;
    producer.Publish("fake.xml", "<no description>");
    EXPECT_THROW(Create(), GenICam::GenericException);
    EXPECT_EQ(file.GetNodeMap(), nullptr);
    producer.Publish("fake.xml", kXml);
    Create();
    EXPECT_NE(file.GetNodeMap(), nullptr);
}

TEST_F(XMLFileTest, UrlThatCannotBeHadIsTold)
{
    producer.nURLError = GenTL::GC_ERR_NOT_AVAILABLE;
    const auto get = [&] { CKxXMLFile::GetURL(&producer.lib, producer.Port()); };
    EXPECT_NE(Raised<CKxGenTLErrorException>(get).find("-1014 = GCGetPortURL(0x"), std::string::npos);
    producer.nURLError = GenTL::GC_ERR_SUCCESS;
    producer.nClaimedSize = size_t{1} << 60;
    EXPECT_THROW(get(), GenICam::OutOfRangeException);
    producer.lib.GCGetPortURL = nullptr;
    producer.lib.GCReadPort = nullptr;
    EXPECT_NE(Raised<CKxGenTLErrorException>(get).find("-1003 = GCGetPortURL(0x"), std::string::npos);
    EXPECT_NE(Raised<CKxGenTLErrorException>([&] {
                  file.CreateNodeMap("local:a.xml;0;10", &port, "Device");
              }).find("-1003 = GCReadPort(0x"),
              std::string::npos);
}

TEST_F(XMLFileTest, SavingNeedsAFileAndAPlaceForIt)
{
    EXPECT_EQ(Raised<RuntimeException>([&] { file.SaveToFile("/tmp/x"); }), "XML File is not loaded.");
    EXPECT_EQ(Raised<RuntimeException>([&] { file.GetXMLFileName(); }), "XML File is not loaded.");
    producer.Publish("fake.xml", kXml);
    Create();
    EXPECT_EQ(Raised<RuntimeException>([&] { file.SaveToFile("/nowhere/x.xml"); }),
              "File /nowhere/x.xml could not be opened.");
    EXPECT_EQ(Raised<RuntimeException>([&] { file.SaveToFile("/dev/full"); }),
              "File /dev/full is unwritable.");
}

TEST_F(XMLFileTest, PartsHaveMapsOfTheirOwn)
{
    GenApi::CNodeMapRef part, chunk;
    file.CreateNodeMapFactoryForChunkData("ChunkRoot", false);
    file.CreateSubTreeNodeMap("Width", part, false);
    file.CreateSubTreeNodeMapForChunkData(chunk);
    EXPECT_EQ(part._Ptr, nullptr);
    EXPECT_EQ(chunk._Ptr, nullptr) << "nothing before there is a map";

    producer.Publish("fake.xml", kXml);
    Create();
    port.Put(0x100, {7, 0, 0, 0});
    port.Put(0x200, {9, 0, 0, 0});
    part._LoadXMLFromString(kXml.c_str());
    file.CreateSubTreeNodeMap("Width", part, false);
    EXPECT_EQ(Integer(part._Ptr, "Width")->GetValue(), 7);
    EXPECT_EQ(part._GetNode("ChunkGain"), nullptr);
    EXPECT_THROW(file.CreateSubTreeNodeMap("Missing", part, false), GenICam::GenericException);

    file.CreateSubTreeNodeMapForChunkData(chunk);
    EXPECT_EQ(chunk._Ptr, nullptr) << "no part was cut out";
    file.CreateNodeMapFactoryForChunkData("ChunkRoot", true);
    file.CreateSubTreeNodeMapForChunkData(chunk);
    ASSERT_NE(chunk._Ptr, nullptr);
    EXPECT_EQ(chunk._GetNode("Width"), nullptr);
    EXPECT_EQ(Integer(chunk._Ptr, "ChunkGain")->GetValue(), 9);
    EXPECT_EQ(Integer(chunk._Ptr, "TLParamsLock")->GetValue(), 1);
    EXPECT_EQ(Integer(file.GetNodeMap(), "TLParamsLock")->GetValue(), 0);
}

} // namespace
