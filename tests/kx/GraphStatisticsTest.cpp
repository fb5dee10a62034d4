// SPDX-License-Identifier: Apache-2.0
// Figures of histograms and profiles.
#include "GraphStatistics.h"

#include <KxApi_IP/IKxGraphDataBufferList.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/KxApi_TL.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace
{

using namespace KxApi;

KxApps::GraphStatistics Of(CKxGraphDataDescription description, const std::vector<uint32_t>& values)
{
    const CKxApiAutoInitTerm sdk;
    const CKxAutoPtr<IKxGraphDataBufferListResizable> list(CreateIKxGraphDataBufferListResizable(nullptr));
    std::copy(values.begin(), values.end(), list->Append(description, values.size()));
    return KxApps::StatisticsOf(*list->GetItem(0)->GetGraphData());
}

TEST(GraphStatistics, OfAHistogram)
{
    CKxGraphDataDescription description;
    description.eComponent = MakeKxPixelComponentType(KxPixelComponent_Gr, 4);
    std::vector<uint32_t> counts(16);
    counts[0] = 1;
    counts[2] = 2;
    counts[15] = 1;
    const KxApps::GraphStatistics s = Of(description, counts);
    EXPECT_EQ(s.component, "Gr");
    EXPECT_DOUBLE_EQ(s.mean, 4.75); // of 0, 2, 2, 15
    EXPECT_DOUBLE_EQ(s.deviation, std::sqrt(35.6875));
    EXPECT_EQ(s.min, 0);
    EXPECT_EQ(s.max, 15);
    EXPECT_EQ(s.atLowerEnd, 0.25);
    EXPECT_EQ(s.atUpperEnd, 0.25);
    EXPECT_EQ(Of(description, {0, 0, 0, 0}).deviation, 0);

    // 18 bits: an entry stands for four values. Signed ones begin with the least.
    description.eComponent = MakeKxPixelComponentType(KxPixelComponent_Mono, 18);
    EXPECT_EQ(Of(description, {0, 5}).mean, 4);
    description.eComponent =
        MakeKxPixelComponentType(KxPixelComponent_Mono, 8, KxPolarization_None, KxPixelNumber_Signed);
    EXPECT_EQ(Of(description, {5, 0}).mean, -128);
    EXPECT_EQ(Of(description, {5, 0}).atLowerEnd, 1);
}

TEST(GraphStatistics, OfAProfile)
{
    CKxGraphDataDescription description;
    description.eKind = KxGraphDataKind_AveragedProfile;
    description.eComponent = MakeKxPixelComponentType(KxPixelComponent_Mono, 8);
    description.nDivisor = 2;
    description.nFullScale = 510;
    const KxApps::GraphStatistics s = Of(description, {3, 510, 0, 7});
    EXPECT_EQ(s.mean, 65);
    EXPECT_EQ(s.max, 255);
    EXPECT_EQ(s.atLowerEnd, 0.25);
    EXPECT_EQ(s.atUpperEnd, 0.25);
}

} // namespace
