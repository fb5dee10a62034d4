// SPDX-License-Identifier: Apache-2.0
// Lists of graph data, and their files.

#include "Allocator.h"
#include "FileTestSupport.h"

#include <KxApi_IP/IKxGraphDataBufferList.h>

#include <atomic>
#include <thread>

using namespace KxApi;
using namespace KxTest;
using ::testing::HasSubstr;

namespace
{

using List = CKxAutoPtr<IKxGraphDataBufferListResizable>;
using Values = std::vector<uint32_t>;

constexpr EKxPixelComponentType_t kRed12 = MakeKxPixelComponentType(KxPixelComponent_R, 12);

Values ValuesOf(const IKxGraphDataBufferList& list, size_t item)
{
    const IKxGraphData& data = *list.GetItem(item)->GetGraphData();
    return data.GetLength() > 0 ? Values(data.GetValues(), data.GetValues() + data.GetLength()) : Values();
}

void Append(IKxGraphDataBufferListResizable& list, const CKxGraphDataDescription& description,
            const Values& values)
{
    std::copy(values.begin(), values.end(), list.Append(description, values.size()));
}

void ExpectSame(const IKxGraphDataBufferList& expected, const IKxGraphDataBufferList& actual)
{
    ASSERT_EQ(actual.GetCount(), expected.GetCount());
    for (size_t i = 0; i < expected.GetCount(); ++i) {
        const IKxGraphData& a = *expected.GetItem(i)->GetGraphData();
        const IKxGraphData& b = *actual.GetItem(i)->GetGraphData();
        EXPECT_EQ(b.GetKind(), a.GetKind());
        for (const auto property :
             {KxGraphDataProperty_FullScale, KxGraphDataProperty_Max, KxGraphDataProperty_Divisor})
            EXPECT_EQ(b.GetProperty(property), a.GetProperty(property));
        EXPECT_EQ(Failure([&] { b.GetProperty(KxGraphDataProperty_Component); }),
                  Failure([&] { a.GetProperty(KxGraphDataProperty_Component); }));
        EXPECT_EQ(ValuesOf(actual, i), ValuesOf(expected, i));
    }
}

class GraphDataListTest : public ::testing::Test
{
protected:
    /// An item of each kind; one without component, one without values.
    void Fill()
    {
        Append(*m_list, {KxGraphDataKind_Histogram, kRed12, 5000000, 1}, {7, 0, 4294967295});
        Append(*m_list, {KxGraphDataKind_LineProfile, KxPixelComponentType_None, 4095, 1}, {1, 4095});
        Append(*m_list, {KxGraphDataKind_InterpolatedProfile, kRed12, 4095 * 65536U, 65536},
               {98304, 1, 4294967295});
        Append(*m_list, {KxGraphDataKind_AveragedProfile, kRed12, 255, 3}, {100, 200, 4294967294, 0});
        Append(*m_list, {KxGraphDataKind_Histogram, kRed12, 0, 1}, {});
    }
    std::string LoadFailure(const std::string& bytes)
    {
        WriteBytes(m_folder / "file", bytes);
        const List loaded(CreateIKxGraphDataBufferListResizable(nullptr));
        loaded->Append({}, 1);
        const std::string failure = Failure([&] { loaded->LoadFromFile((m_folder / "file").c_str()); });
        EXPECT_TRUE(failure.empty() || loaded->GetCount() == 1) << "a refused file changed the list";
        return failure;
    }

    CKxApiAutoInitTerm m_sdk;
    Folder m_folder;
    List m_list{CreateIKxGraphDataBufferListResizable(nullptr)};
};

TEST_F(GraphDataListTest, ItemsTellTheirValuesAndProperties)
{
    Fill();
    ASSERT_EQ(m_list->GetCount(), 5U);
    const IKxGraphData& first = *m_list->GetItem(0)->GetGraphData();
    EXPECT_EQ(first.GetProperty(KxGraphDataProperty_Component), 0x020C0000);
    EXPECT_EQ(first.GetProperty(KxGraphDataProperty_FullScale), 5000000);
    EXPECT_EQ(first.GetProperty(KxGraphDataProperty_Max), 4294967295);
    EXPECT_EQ(first.GetProperty(KxGraphDataProperty_Divisor), 1);
    EXPECT_EQ(m_list->GetItem(3)->GetGraphData()->GetProperty(KxGraphDataProperty_Divisor), 3);
    EXPECT_EQ(m_list->GetItem(4)->GetGraphData()->GetProperty(KxGraphDataProperty_Max), 0);
    EXPECT_THROW(m_list->GetItem(1)->GetGraphData()->GetProperty(KxGraphDataProperty_Component),
                 GenICam::InvalidArgumentException);
    EXPECT_THROW(first.GetProperty(static_cast<EKxGraphDataProperty_t>(2)),
                 GenICam::InvalidArgumentException);
    EXPECT_THROW(m_list->GetItem(5), GenICam::OutOfRangeException);
    EXPECT_THROW(m_list->Append({static_cast<EKxGraphDataKind_t>(4), kRed12, 1, 1}, 1),
                 GenICam::InvalidArgumentException);
    EXPECT_THROW(m_list->Append({KxGraphDataKind_Histogram, kRed12, 1, 2}, 1),
                 GenICam::InvalidArgumentException);
    EXPECT_THROW(m_list->Append({KxGraphDataKind_AveragedProfile, kRed12, 1, 0}, 1),
                 GenICam::InvalidArgumentException);
    EXPECT_THROW(m_list->Append({}, ~size_t{0}), GenICam::BadAllocException);
    EXPECT_EQ(m_list->GetCount(), 5U);
}

TEST_F(GraphDataListTest, CopiesStandOnTheirOwnAndReuseMemory)
{
    Fill();
    const List copy(CreateIKxGraphDataBufferListResizable(nullptr));
    Append(*copy, {}, Values(100, 1));
    const uint32_t* const memory = copy->GetItem(0)->GetGraphData()->GetValues();
    copy->CopyFrom(m_list.Get());
    ExpectSame(*m_list, *copy);
    EXPECT_EQ(copy->GetItem(0)->GetGraphData()->GetValues(), memory);
    m_list->Clear();
    Append(*m_list, {}, {1});
    EXPECT_EQ(ValuesOf(*copy, 0), (Values{7, 0, 4294967295}));
    copy->CopyFrom(copy.Get());
    EXPECT_EQ(copy->GetCount(), 5U);
    EXPECT_THROW(copy->CopyFrom(nullptr), GenICam::LogicalErrorException);
}

TEST_F(GraphDataListTest, ValuesLieInTheAllocatorsMemory)
{
    Allocator allocator;
    List list(CreateIKxGraphDataBufferListResizable(&allocator));
    list->Append({}, 100);
    list->Clear();
    list->Append({}, 50); // in the same memory
    EXPECT_EQ(allocator.sizes, std::vector<size_t>{400});
    allocator.empty = true;
    EXPECT_THROW(list->Append({}, 1001), GenICam::BadAllocException);
    EXPECT_EQ(list->GetCount(), 1U);
    list.Reset();
    EXPECT_TRUE(allocator.IsDeregistered());
}

TEST_F(GraphDataListTest, FilesOfBothTypesBringAllBack)
{
    for (const bool isEmpty : {true, false}) {
        if (!isEmpty)
            Fill();
        for (const auto type : {KxGraphDataFileType_Raw, KxGraphDataFileType_Csv}) {
            m_list->SaveToFile(type, (m_folder / "graph").c_str());
            const List loaded(CreateIKxGraphDataBufferListResizable(nullptr));
            loaded->LoadFromFile((m_folder / "graph").c_str());
            ExpectSame(*m_list, *loaded);
        }
    }
    EXPECT_THAT(
        Failure([&] { m_list->SaveToFile(KxGraphDataFileType_Csv, (m_folder / "no/where").c_str()); }),
        HasSubstr("No such file"));
    EXPECT_THROW(m_list->SaveToFile(static_cast<EKxGraphDataFileType_t>(2), (m_folder / "x").c_str()),
                 GenICam::InvalidArgumentException);
    EXPECT_THAT(m_folder.Names(), ::testing::ElementsAre("graph"));
}

TEST_F(GraphDataListTest, CsvShowsAColumnForEachItem)
{
    Append(*m_list, {KxGraphDataKind_Histogram, kRed12, 9, 1}, {4, 5});
    Append(*m_list, {KxGraphDataKind_AveragedProfile, KxPixelComponentType_None, 4095 * 16, 16},
           {24, 1, 65520});
    m_list->SaveToFile(KxGraphDataFileType_Csv, (m_folder / "graph.csv").c_str());
    EXPECT_EQ(ReadBytes(m_folder / "graph.csv"), "# kind,histogram,averaged profile\n"
                                                 "# component,0x020C0000,0x00000000\n"
                                                 "# full scale,9,65520\n"
                                                 "# divisor,1,16\n"
                                                 "index,R,data\n"
                                                 "0,4,1.5\n"
                                                 "1,5,0.0625\n"
                                                 "2,,4095\n");
}

TEST_F(GraphDataListTest, DamagedRawFilesAreRefused)
{
    Fill();
    m_list->SaveToFile(KxGraphDataFileType_Raw, (m_folder / "whole").c_str());
    const std::string whole = ReadBytes(m_folder / "whole");
    EXPECT_EQ(LoadFailure(whole), "");
    for (size_t i = 0; i < whole.size(); ++i) {
        std::string changed = whole;
        changed[i] = static_cast<char>(changed[i] ^ 1);
        ASSERT_NE(LoadFailure(changed), "") << "byte " << i;
        ASSERT_NE(LoadFailure(whole.substr(0, i)), "") << i << " bytes";
    }
    const Filer filer(CreateIKxFiler(KxFilerType_StillImage));
    filer->Save(NoiseImage(KxPixelFormat_Mono8, 2, 2)->GetIKxImage(), KxStillImageFileType_Raw,
                (m_folder / "image").c_str());
    EXPECT_THAT(LoadFailure(ReadBytes(m_folder / "image")), HasSubstr("no graph data"));
}

TEST_F(GraphDataListTest, CsvFilesThatMakeNoSenseAreRefusedByLine)
{
    const std::string header = "# kind,histogram,averaged profile\n# component,0x01080000,0x0\n"
                               "# full scale,9,9\n# divisor,1,4\nindex,a,b\n";
    EXPECT_EQ(LoadFailure(header + "0,1,0.25\r\n1,,7\r\n"), ""); // as spreadsheets write it
    struct Case
    {
        std::string text;
        const char* cause;
    };
    for (const Case& c : {
             Case{"", "line 1 isn't complete"},
             Case{"# kind,curve\n", "line 1 names an unknown kind"},
             Case{"# kind,histogram\n# component,12\n", "line 2 has a cell that doesn't begin with 0x"},
             Case{"# kind,histogram\n# component,0x0,0x0\n", "line 2 has too many columns"},
             Case{"# kind,histogram\n# component,0x0\n# full scale\n", "line 3 has too few columns"},
             Case{"# kind,histogram\n# component,0x0\n# full scale,1\n# divisor,2\n", "line 4 has a divisor"},
             Case{header + "1,1,1\n", "line 6 isn't the next index"},
             Case{header + "0,1,1\n1,,1\n2,1,1\n", "line 8 goes on with an item that has ended"},
             Case{header + "0,1\n", "line 6 has too few columns"},
             Case{header + "0,1,1,1\n", "line 6 has too many columns"},
             Case{header + "0,x,1\n", "line 6 has a cell that is no number"},
             Case{header + "0,4294967296,1\n", "line 6 has a cell that is no number"},
             Case{header + "0,1,1073741824\n", "line 6 has a value beyond the range"},
             Case{header + "0,1,nan\n", "line 6 has a value beyond the range"},
             Case{header + "0,1,-1\n", "line 6 has a value beyond the range"},
             Case{header + "0,1,1", "line 6 isn't complete"},
         })
        EXPECT_THAT(LoadFailure(c.text), HasSubstr(c.cause)) << c.text;
}

TEST_F(GraphDataListTest, SavingWhileNewDataComeWritesOneOrTheOther)
{
    const List ones(CreateIKxGraphDataBufferListResizable(nullptr));
    const List twos(CreateIKxGraphDataBufferListResizable(nullptr));
    Append(*ones, {}, Values(1000, 1));
    Append(*twos, {}, Values(20000, 2));
    m_list->CopyFrom(ones.Get());
    std::atomic<bool> isOver{false};
    std::thread registering([&] {
        while (!isOver) {
            m_list->CopyFrom(twos.Get());
            m_list->CopyFrom(ones.Get());
        }
    });
    for (int i = 0; i < 50; ++i) {
        m_list->SaveToFile(KxGraphDataFileType_Raw, (m_folder / "graph").c_str());
        const List loaded(CreateIKxGraphDataBufferListResizable(nullptr));
        loaded->LoadFromFile((m_folder / "graph").c_str());
        const Values values = ValuesOf(*loaded, 0);
        EXPECT_TRUE(values == Values(1000, 1) || values == Values(20000, 2));
    }
    isOver = true;
    registering.join();
}

} // namespace
