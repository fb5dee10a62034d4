// SPDX-License-Identifier: Apache-2.0
// kx doctor over a system that is a folder.
#include "ProgramTest.h"

#include <gmock/gmock.h>

namespace
{

using testing::AllOf;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class DoctorCommand : public KxTest::ProgramTest
{
protected:
    void Put(const std::string& path, const std::string& text) const
    {
        const std::filesystem::path file = m_folder / "root" / path;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << text << "\n";
    }
    std::vector<std::string> Lines() const
    {
        const KxTest::Outcome outcome = RunProgram(KX_PROGRAM, "doctor --root root");
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
        return KxTest::LinesOf(outcome.output);
    }
};

TEST_F(DoctorCommand, NamesEachFaultWithTheLineThatMendsIt)
{
    Put("sys/module/usbcore/parameters/usbfs_memory_mb", "16");
    Put("proc/sys/net/core/rmem_max", "212992");
    Put("sys/class/net/cam0/type", "1");
    Put("sys/class/net/cam0/mtu", "1500");
    Put("proc/sys/net/ipv4/conf/all/rp_filter", "1");
    Put("sys/class/net/lo/type", "772");
    Put("sys/bus/usb/devices/2-1:1.0/bInterfaceClass", "ef");
    Put("sys/bus/usb/devices/2-1:1.0/bInterfaceSubClass", "05");
    Put("sys/bus/usb/devices/2-1/busnum", "2");
    Put("sys/bus/usb/devices/2-1/devnum", "7");
    Put("etc/ufw/ufw.conf", "ENABLED=yes");
    EXPECT_THAT(Lines(),
                AllOf(Contains("mend  USB memory: usbfs_memory_mb is 16"),
                      Contains("        echo 1000 | sudo tee /sys/module/usbcore/parameters/usbfs_memory_mb"),
                      Contains(StartsWith("mend  USB permissions: ")),
                      Contains("mend  USB camera: /dev/bus/usb/002/007 can't be opened by this user"),
                      Contains(StartsWith("mend  Socket buffers: ")),
                      Contains(HasSubstr("sudo ip link set cam0 mtu 9000")),
                      Contains(HasSubstr("net.ipv4.conf.cam0.rp_filter=0")),
                      Contains(StartsWith("mend  Firewall: ufw")),
                      Contains(AllOf(StartsWith("good  Producer: "), HasSubstr("KxSimulator.cti")))));
    EXPECT_THAT(Lines(), Not(Contains(HasSubstr("Network lo"))));
}

TEST_F(DoctorCommand, FindsNothingWhereAllIsWell)
{
    Put("sys/module/usbcore/parameters/usbfs_memory_mb", "0");
    Put("etc/udev/rules.d/60-kxapi-cameras.rules", "");
    Put("proc/sys/net/core/rmem_max", "33554432");
    Put("sys/class/net/cam0/type", "1");
    Put("sys/class/net/cam0/mtu", "9000");
    EXPECT_EQ(Lines().back(), "nothing stands in the way of cameras");
}

} // namespace
