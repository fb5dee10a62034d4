// SPDX-License-Identifier: Apache-2.0
#include <KxSDKCommon/KxApi_Exception.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

using namespace KxApi;

namespace
{

TEST(LinuxErrorExceptionTest, TellsCodeFunctionTextAndPlace)
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

TEST(LinuxErrorExceptionTest, LongTextsAreCut)
{
    const std::string text(2000, 'x');
    const auto exception = KX_LINUX_ERROR_EXCEPTION(5, "read", "%s", text.c_str());
    EXPECT_EQ(exception.GetDescription(), std::string(1023, 'x'));
    EXPECT_STREQ(exception.GetSourceFileName(), "KxSDKCommon/ExceptionTest");
}

} // namespace
