// SPDX-License-Identifier: Apache-2.0
#include "FakeProducer.h"

#include <KxSDKCommon/KxApi_Exception.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

using namespace KxApi;

namespace
{

TEST(LinuxErrorException, TellsCodeFunctionTextAndPlace)
{
    errno = ENOENT;
    try {
        throw CKxLinuxErrorExceptionReporter("KxSDKCommon/Some", 12, "KxLinuxErrorException")
            .Report(EACCES, "open", "cannot open %s", "file");
    } catch (const GenICam::GenericException& e) {
        EXPECT_STREQ(e.GetDescription(),
                     "cannot open file ErrorCode=0x0000000d \" \"No such file or directory");
        EXPECT_STREQ(e.GetSourceFileName(), "KxSDKCommon/Some");
        EXPECT_EQ(e.GetSourceLine(), 12u);
        EXPECT_NE(std::string(e.what()).find("KxLinuxErrorException"), std::string::npos);
        const auto* const pLinux = dynamic_cast<const CKxLinuxErrorException*>(&e);
        ASSERT_NE(pLinux, nullptr);
        EXPECT_EQ(pLinux->GetError(), EACCES);
        EXPECT_STREQ(pLinux->GetFunctionName().c_str(), "open");
    }
}

TEST(LinuxErrorException, LongTextsAreCut)
{
    const std::string text(2000, 'x');
    const auto exception = KX_LINUX_ERROR_EXCEPTION(5, "read", "%s", text.c_str());
    EXPECT_EQ(exception.GetDescription(), std::string(1023, 'x'));
    EXPECT_STREQ(exception.GetSourceFileName(), "KxSDKCommon/ExceptionTest");
}

TEST(GenTLErrorException, AddsTheProducersTextForTheSameError)
{
    KxTest::FakeProducer producer;
    const auto description = [&](KxApi::CKxGenTLLib* pLib) -> std::string {
        const CKxGenTLErrorException exception =
            KX_GENTL_ERROR_EXCEPTION(pLib, GenTL::GC_ERR_TIMEOUT, "EventGetData", "waited %d", 5);
        EXPECT_EQ(exception.GetError(), GenTL::GC_ERR_TIMEOUT);
        EXPECT_STREQ(exception.GetFunctionName().c_str(), "EventGetData");
        EXPECT_STREQ(exception.GetSourceFileName(), "KxSDKCommon/ExceptionTest");
        EXPECT_NE(std::string(exception.what()).find("KxGenTLErrorException"), std::string::npos);
        return exception.GetDescription();
    };
    producer.lastErrorText = "too slow";
    EXPECT_EQ(description(&producer.lib), "waited 5") << "the last error is another one";
    producer.nLastError = GenTL::GC_ERR_TIMEOUT;
    EXPECT_EQ(description(&producer.lib), "waited 5 too slow");
    producer.lastErrorText = std::string(3000, 'x');
    EXPECT_EQ(description(&producer.lib), "waited 5 " + std::string(1023 - 9, 'x'));
    producer.nClaimedSize = size_t{1} << 60;
    EXPECT_EQ(description(&producer.lib), "waited 5") << "nonsense isn't allocated";
    producer.nClaimedSize = 10; // the text's end is missing
    EXPECT_EQ(description(&producer.lib), "waited 5 " + std::string(10, 'x'));
    EXPECT_EQ(description(nullptr), "waited 5");
    producer.lib.GCGetLastError = nullptr;
    EXPECT_EQ(description(&producer.lib), "waited 5");
}

} // namespace
