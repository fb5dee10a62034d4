// SPDX-License-Identifier: Apache-2.0
#include "MachineCheck.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <optional>

namespace fs = std::filesystem;

namespace Kx
{

namespace
{

constexpr char kRuleFile[] = "60-kxapi-cameras.rules";
constexpr long kUsbMegabytes = 1000;     // several USB3 cameras with eight buffers each
constexpr long kJumboMtu = 8000;         // packets of GigE cameras that have few of them
constexpr long kSocketBytes = 16L << 20; // two images of five megapixels
constexpr char kCameraClass[] = "ef", kCameraSubclass[] = "05"; // of a USB3 Vision interface

/// The first word of a file; empty without.
std::string ReadWord(const fs::path& path)
{
    std::ifstream file(path);
    std::string word;
    file >> word;
    return word;
}

std::optional<long> ReadNumber(const fs::path& path)
{
    const std::string word = ReadWord(path);
    char* pEnd = nullptr;
    const long number = std::strtol(word.c_str(), &pEnd, 10);
    return word.empty() || *pEnd ? std::nullopt : std::optional<long>(number);
}

std::vector<fs::path> Entries(const fs::path& folder)
{
    std::error_code error;
    std::vector<fs::path> entries;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error))
        entries.push_back(entry.path());
    std::sort(entries.begin(), entries.end());
    return entries;
}

void CheckUsb(const fs::path& root, std::vector<Finding>& findings)
{
    const auto memory = ReadNumber(root / "sys/module/usbcore/parameters/usbfs_memory_mb");
    if (memory)
        findings.push_back({*memory == 0 || *memory >= kUsbMegabytes, "USB memory",
                            "usbfs_memory_mb is " + std::to_string(*memory),
                            "echo " + std::to_string(kUsbMegabytes) +
                                " | sudo tee /sys/module/usbcore/parameters/usbfs_memory_mb"});
    bool hasRule = false;
    for (const char* const folder : {"etc/udev/rules.d", "lib/udev/rules.d", "usr/lib/udev/rules.d"})
        hasRule = hasRule || fs::exists(root / folder / kRuleFile);
    findings.push_back({hasRule, "USB permissions",
                        std::string(kRuleFile) + (hasRule ? " is installed" : " isn't installed"),
                        std::string("sudo cp packaging/") + kRuleFile +
                            " /etc/udev/rules.d/ && sudo udevadm control --reload && sudo udevadm trigger"});
    for (const fs::path& interface : Entries(root / "sys/bus/usb/devices")) {
        if (ReadWord(interface / "bInterfaceClass") != kCameraClass ||
            ReadWord(interface / "bInterfaceSubClass") != kCameraSubclass)
            continue;
        const std::string name = interface.filename().string();
        const fs::path device = interface.parent_path() / name.substr(0, name.find(':'));
        char node[64];
        std::snprintf(node, sizeof node, "dev/bus/usb/%03ld/%03ld", ReadNumber(device / "busnum").value_or(0),
                      ReadNumber(device / "devnum").value_or(0));
        const bool canWrite = access((root / node).c_str(), R_OK | W_OK) == 0;
        findings.push_back(
            {canWrite, "USB camera",
             std::string("/") + node + (canWrite ? " can be opened" : " can't be opened by this user"),
             std::string("sudo chmod a+rw /") + node});
    }
}

/// Ethernet cards that are up.
std::vector<std::string> Cards(const fs::path& root)
{
    constexpr char kEthernet[] = "1";
    std::vector<std::string> cards;
    for (const fs::path& card : Entries(root / "sys/class/net"))
        if (ReadWord(card / "type") == kEthernet && ReadWord(card / "operstate") != "down")
            cards.push_back(card.filename().string());
    return cards;
}

void CheckReversePath(const fs::path& root, const std::string& card, std::vector<Finding>& findings)
{
    const auto filter = [&](const std::string& name) {
        return ReadNumber(root / "proc/sys/net/ipv4/conf" / name / "rp_filter").value_or(0);
    };
    const bool isStrict = std::max(filter("all"), filter(card)) == 1;
    findings.push_back(
        {!isStrict, "Network " + card,
         isStrict ? "the reverse path filter drops answers of cameras in other subnets"
                  : "the reverse path filter lets cameras of other subnets answer",
         "sudo sysctl -w net.ipv4.conf.all.rp_filter=0 net.ipv4.conf." + card + ".rp_filter=0"});
}

void CheckNetwork(const fs::path& root, std::vector<Finding>& findings)
{
    const auto bytes = ReadNumber(root / "proc/sys/net/core/rmem_max");
    if (bytes)
        findings.push_back({*bytes >= kSocketBytes, "Socket buffers",
                            "net.core.rmem_max is " + std::to_string(*bytes) + " bytes",
                            "sudo sysctl -w net.core.rmem_max=" + std::to_string(2 * kSocketBytes)});
    for (const std::string& card : Cards(root)) {
        const long mtu = ReadNumber(root / "sys/class/net" / card / "mtu").value_or(0);
        findings.push_back({mtu >= kJumboMtu, "Network " + card,
                            "packets of " + std::to_string(mtu) + " bytes",
                            "sudo ip link set " + card + " mtu 9000"});
        CheckReversePath(root, card, findings);
    }
}

void CheckFirewall(const fs::path& root, std::vector<Finding>& findings)
{
    std::ifstream settings(root / "etc/ufw/ufw.conf");
    const std::string text{std::istreambuf_iterator<char>(settings), {}};
    if (text.find("ENABLED=yes") != std::string::npos)
        findings.push_back({false, "Firewall", "ufw is on, which drops images and answers to broadcasts",
                            "sudo ufw allow in on CARD proto udp from any"});
    if (fs::exists(root / "run/firewalld"))
        findings.push_back({false, "Firewall",
                            "firewalld is on, which drops images and answers to broadcasts",
                            "sudo firewall-cmd --zone=trusted --change-interface=CARD"});
}

} // namespace

std::vector<Finding> CheckMachine(const fs::path& root)
{
    std::vector<Finding> findings;
    CheckUsb(root, findings);
    CheckNetwork(root, findings);
    CheckFirewall(root, findings);
    for (Finding& finding : findings)
        if (finding.isGood)
            finding.mend.clear();
    return findings;
}

} // namespace Kx
