// SPDX-License-Identifier: Apache-2.0
// GigE Vision cameras that are programs, in a network of this test's own: the loopback one of a namespace, so
// that nothing leaves the machine and tests beside each other don't meet.
#include "Cameras.h"
#include "GigeCameraProgram.h"

#include <GenApi/GenApi.h>
#include <KxApi_TL/IKxPort.h>
#include <KxApi_TL/IKxStream.h>
#include <KxSDKCommon/KxApi_Exception.h>

#include <GenTL/GenTL.h>
#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <optional>
#include <random>
#include <sstream>
#include <thread>

namespace KxTest
{
namespace
{

using namespace KxApi;
using Bytes = std::vector<uint8_t>;
using StreamPtr = CKxAutoPtr<IKxStreamReleasable, IKxStream>;
using ImagePtr = CKxAutoPtr<IKxStreamImageReleasable, IKxStreamImage>;

constexpr char kCamera[] = "GEV_000000000000"; // the loopback card has no address of its own
constexpr uint16_t kControlPort = 3956;
constexpr int kLongMs = 60000; // far more than anything takes that works

bool Eventually(const std::function<bool()>& holds)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(kLongMs);
    while (!holds()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

const std::string g_whyNoNetwork = EnterNetworkOfItsOwn();

/// A UDP socket of the loopback network.
class Socket
{
public:
    explicit Socket(uint16_t port = 0)
        : m_file(socket(AF_INET, SOCK_DGRAM, 0))
    {
        const sockaddr_in place = Loopback(port);
        EXPECT_EQ(bind(m_file, reinterpret_cast<const sockaddr*>(&place), sizeof place), 0);
        const timeval wait{0, 50000};
        setsockopt(m_file, SOL_SOCKET, SO_RCVTIMEO, &wait, sizeof wait);
    }
    ~Socket() { close(m_file); }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    void Send(const Bytes& bytes, const sockaddr_in& place) const
    {
        sendto(m_file, bytes.data(), bytes.size(), 0, reinterpret_cast<const sockaddr*>(&place),
               sizeof place);
    }
    void Send(const Bytes& bytes, uint16_t port) const { Send(bytes, Loopback(port)); }
    /// Empty when nothing came for a moment.
    Bytes Receive(sockaddr_in& from) const
    {
        Bytes bytes(2048);
        socklen_t length = sizeof from;
        const ssize_t size =
            recvfrom(m_file, bytes.data(), bytes.size(), 0, reinterpret_cast<sockaddr*>(&from), &length);
        bytes.resize(size > 0 ? static_cast<size_t>(size) : 0);
        return bytes;
    }

private:
    static sockaddr_in Loopback(uint16_t port)
    {
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_port = htons(port);
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return place;
    }
    int m_file;
};

/// Answers what a camera is asked as the function tells.
class Impostor
{
public:
    explicit Impostor(std::function<std::vector<Bytes>(const Bytes&)> answer)
        : m_answer(std::move(answer))
        , m_thread([this] {
            while (!m_end) {
                sockaddr_in from{};
                const Bytes question = m_socket.Receive(from);
                if (!question.empty())
                    for (const Bytes& datagram : m_answer(question))
                        m_socket.Send(datagram, from);
            }
        })
    {}
    ~Impostor()
    {
        m_end = true;
        m_thread.join();
    }
    Impostor(const Impostor&) = delete;
    Impostor& operator=(const Impostor&) = delete;

private:
    const Socket m_socket{kControlPort};
    const std::function<std::vector<Bytes>(const Bytes&)> m_answer;
    std::atomic<bool> m_end{false};
    std::thread m_thread;
};

/// Another program, which controls the camera and gives signs of life: without them a camera forgets it after
/// seconds.
class OtherProgram
{
public:
    ~OtherProgram()
    {
        m_end = true;
        m_thread.join();
    }

private:
    void Control() const
    {
        // Write register 0x0A00 = 2: control.
        m_socket.Send({0x42, 1, 0, 0x82, 0, 8, 0, 1, 0, 0, 0x0A, 0, 0, 0, 0, 2}, kControlPort);
        while (!m_end) {
            m_socket.Send({0x42, 1, 0, 0x80, 0, 4, 0, 2, 0, 0, 0x0A, 0}, kControlPort); // read it
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    }

    const Socket m_socket;
    std::atomic<bool> m_end{false};
    std::thread m_thread{&OtherProgram::Control, this};
};

class GigeCamera : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!g_whyNoNetwork.empty())
            GTEST_SKIP() << g_whyNoNetwork;
        if (std::system("command -v arv-fake-gv-camera-0.8 >/dev/null") != 0)
            GTEST_SKIP() << "aravis-tools is not installed";
        setenv("KXAPI_ARAVIS_CARDS", "lo", 1);
        Initialize();
        m_system.Reset(CreateIKxSystem(KXARAVIS_PRODUCER));
    }
    void TearDown() override
    {
        m_stream.Reset();
        m_device.Reset();
        m_camera.reset(); // not before it was let go of
        if (m_system) {
            m_system.Reset();
            Terminate();
        }
    }

    IKxInterface* Card()
    {
        m_system->UpdateInterfaceList();
        for (uint32_t i = 0; i < m_system->GetInterfaceCount(); ++i)
            if (m_system->GetIKxInterface(i)->GetIKxInterfaceInfo()->GetTLType() == "GEV")
                return m_system->GetIKxInterface(i);
        return nullptr;
    }
    /// Looks until the camera has that status.
    bool Becomes(int32_t status, const std::string& id = kCamera)
    {
        IKxInterface* const pCard = Card();
        return Eventually([&] {
            pCard->UpdateDeviceList();
            m_pInfo = nullptr;
            for (uint32_t i = 0; i < pCard->GetDeviceCount(); ++i)
                if (pCard->GetIKxDeviceInfo(i)->GetID() == id.c_str())
                    m_pInfo = pCard->GetIKxDeviceInfo(i);
            return m_pInfo && m_pInfo->GetAccessStatus() == status;
        });
    }
    void Open(EKxDeviceAccess_t access = KxDeviceAccess_Control)
    {
        m_device.Reset(CreateIKxDevice(Card(), m_pInfo, access));
    }
    template <class Pointer>
    Pointer Node(const char* name)
    {
        return Pointer(m_device->GetIKxRemotePort()->GetINodeMap()->GetNode(name));
    }
    void Stream(int64_t width, double rate)
    {
        Node<GenApi::CIntegerPtr>("Width")->SetValue(width);
        Node<GenApi::CFloatPtr>("AcquisitionFrameRate")->SetValue(rate);
        m_stream.Reset(m_device->OpenIKxStream(0));
        m_stream->StartAcquisition(nullptr, kKxEndless);
    }

    std::optional<CameraProgram> m_camera;
    CKxAutoPtr<IKxSystemReleasable, IKxSystem> m_system;
    const IKxDeviceInfo* m_pInfo = nullptr;
    KxApps::Device m_device;
    StreamPtr m_stream;
};

TEST_F(GigeCamera, IsFoundOpenedSetAndGivesItsImages)
{
    m_camera.emplace();
    ASSERT_TRUE(Becomes(GenTL::DEVICE_ACCESS_STATUS_READWRITE));
    EXPECT_EQ(m_pInfo->GetModel(), "Fake");
    EXPECT_EQ(m_pInfo->GetSerialNumber(), "GV01");
    Open();
    EXPECT_TRUE(Becomes(GenTL::DEVICE_ACCESS_STATUS_OPEN_READWRITE));
    Stream(640, 100);
    // A packet that comes late, because the camera's program had to wait for the processor, counts as lost.
    uint64_t nLast = 0;
    for (int nWhole = 0; nWhole < 50;) {
        const ImagePtr image(m_stream->FetchImage(kLongMs));
        ASSERT_TRUE(image);
        EXPECT_GT(image->GetFrameID(), nLast);
        nLast = image->GetFrameID();
        if (image->IsIncomplete())
            continue;
        ++nWhole;
        EXPECT_EQ(image->GetImageWidth(), 640U);
        EXPECT_EQ(image->GetImagePixelFormat(), KxPixelFormat_Mono8);
        // The program's picture is a ramp, which begins anew now and then.
        const auto* const pPixels = static_cast<const uint8_t*>(image->GetImageBuffer());
        int nSteps = 0;
        for (int x = 1; x < 640; ++x)
            nSteps += pPixels[x] == pPixels[x - 1] + 1 ? 1 : 0;
        EXPECT_GT(nSteps, 630);
    }
    m_stream->StopAcquisition();
    m_stream->StartAcquisition(nullptr, 5);
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(ImagePtr(m_stream->FetchImage(kLongMs)));
}

TEST_F(GigeCamera, ThatAnotherProgramControlsIsBusyAndCanBeRead)
{
    m_camera.emplace();
    ASSERT_TRUE(Becomes(GenTL::DEVICE_ACCESS_STATUS_READWRITE));
    const OtherProgram other;
    ASSERT_TRUE(Becomes(GenTL::DEVICE_ACCESS_STATUS_BUSY));
    try {
        Open();
        FAIL() << "opened";
    } catch (const CKxGenTLErrorException& e) {
        EXPECT_THAT(e.GetDescription(), testing::HasSubstr("controlled by another program"));
    }
    Open(KxDeviceAccess_ReadOnly);
    EXPECT_EQ(Node<GenApi::CIntegerPtr>("SensorWidth")->GetValue(), 2048);
    EXPECT_THROW(Node<GenApi::CIntegerPtr>("Width")->SetValue(100), GenICam::GenericException);
}

class LostGigeCamera : public GigeCamera, public testing::WithParamInterface<bool>
{};

// Killed, and frozen.
INSTANTIATE_TEST_SUITE_P(, LostGigeCamera, testing::Bool());

TEST_P(LostGigeCamera, IsToldAndCanBeHadAgain)
{
    m_camera.emplace();
    ASSERT_TRUE(Becomes(GenTL::DEVICE_ACCESS_STATUS_READWRITE));
    Open();
    Stream(64, 50);
    ASSERT_TRUE(ImagePtr(m_stream->FetchImage(kLongMs)));
    if (GetParam())
        m_camera->Kill();
    else
        m_camera->Freeze();
    EXPECT_TRUE(Eventually([&] { return m_device->IsLost(); }));
    EXPECT_TRUE(Eventually([&] {
        try {
            ImagePtr(m_stream->FetchImage(100)); // those that had come before
        } catch (const GenICam::GenericException& e) {
            EXPECT_THAT(e.GetDescription(), testing::HasSubstr("does not answer any more"));
        }
        return !m_stream->IsAcquiring();
    }));
    m_stream.Reset();
    m_device.Reset();
    m_camera.reset();

    m_camera.emplace();
    ASSERT_TRUE(Becomes(GenTL::DEVICE_ACCESS_STATUS_READWRITE));
    Open();
    Stream(64, 50);
    EXPECT_TRUE(ImagePtr(m_stream->FetchImage(kLongMs)));
}

TEST_F(GigeCamera, OverALossyNetworkTellsWhichImagesAreIncomplete)
{
    m_camera.emplace("200"); // two of ten packets are lost, also those that tell an image's number
    ASSERT_TRUE(Becomes(GenTL::DEVICE_ACCESS_STATUS_READWRITE));
    Open();
    Node<GenApi::CIntegerPtr>("Height")->SetValue(16);
    Stream(128, 50);
    uint64_t nIncomplete = 0, nComplete = 0, nLast = 0;
    EXPECT_TRUE(Eventually([&] {
        const ImagePtr image(m_stream->FetchImage(1000));
        if (!image)
            return false;
        const auto nStep = static_cast<int16_t>(image->GetFrameID() - nLast); // IDs of 16 bits begin anew
        EXPECT_TRUE(nStep > 0 || nLast == 0) << image->GetFrameID() << " after " << nLast;
        nLast = image->GetFrameID();
        ++(image->IsIncomplete() ? nIncomplete : nComplete);
        return nIncomplete > 50 && nComplete > 2;
    }));
    EXPECT_EQ(m_stream->GetStatistics().nIncomplete, nIncomplete);
}

TEST_F(GigeCamera, StreamsAgainAfterWrongPacketsHaveReachedItsSockets)
{
    m_camera.emplace();
    ASSERT_TRUE(Becomes(GenTL::DEVICE_ACCESS_STATUS_READWRITE));
    Open();
    Stream(640, 100);
    const Socket noise;
    // A trailer of an image to come that would have 4 billion packets, with long IDs and with short ones.
    const Bytes absurd[] = {{0, 0, 0, 0, 0x82, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 239, 255, 255, 255},
                            {0, 0, 127, 0, 0x02, 255, 255, 255}};
    std::mt19937 random(11); // NOLINT(cert-msc51-cpp): the same bytes each time
    for (int i = 0; i < 100; ++i) {
        // All ports of the namespace but the camera's are ours.
        std::ifstream table("/proc/thread-self/net/udp");
        std::string line;
        std::getline(table, line);
        while (std::getline(table, line)) {
            std::istringstream fields(line);
            std::string number, local; // such as "0100007F:0F74"
            fields >> number >> local;
            const auto port =
                static_cast<uint16_t>(std::stoul(local.substr(local.find(':') + 1), nullptr, 16));
            Bytes bytes(random() % 1500);
            for (uint8_t& byte : bytes)
                byte = static_cast<uint8_t>(random() % 3 == 0 ? random() : 0);
            if (port != kControlPort) {
                for (const Bytes& packet : absurd)
                    noise.Send(packet, port);
                noise.Send(bytes, port);
            }
        }
        try {
            ImagePtr(m_stream->FetchImage(20));
        } catch (const GenICam::GenericException&) { // what came is no image
        }
    }
    // A packet that claims to be of a later image makes all before it old, until the stream is started anew.
    m_stream->StopAcquisition();
    m_stream->StartAcquisition(nullptr, kKxEndless);
    for (int i = 0; i < 10; ++i)
        EXPECT_TRUE(ImagePtr(m_stream->FetchImage(kLongMs)));
}

/// What a camera of another subnet answers, until it has been given an address.
std::vector<Bytes> AnswerAsFarCamera(const Bytes& question, Bytes& address)
{
    const auto header = [&](uint8_t command, size_t length) {
        return Bytes{0, 0, 0, command, 0, static_cast<uint8_t>(length), question[6], question[7]};
    };
    switch (question.size() < 8 ? 0 : question[3]) {
    case 0x02: {
        Bytes answer = header(0x03, 248);
        answer.resize(8 + 248);
        const Bytes mac = {0x02, 1, 2, 3, 4, 5}, mask = {255, 0, 0, 0};
        std::copy(mac.begin(), mac.end(), answer.begin() + 18);
        std::copy(address.begin(), address.end(), answer.begin() + 44);
        std::copy(mask.begin(), mask.end(), answer.begin() + 60);
        answer[80] = 'V';
        answer[112] = 'M';
        return {answer};
    }
    case 0x04:
        address.assign(question.begin() + 28, question.begin() + 32);
        return {header(0x05, 0)};
    case 0x80: {
        Bytes answer = header(0x81, 4);
        answer.resize(12);
        return {answer};
    }
    default:
        return {};
    }
}

TEST_F(GigeCamera, OfAnotherSubnetIsReachedByForceIp)
{
    Bytes address = {10, 1, 2, 3};
    const Impostor camera([&](const Bytes& question) { return AnswerAsFarCamera(question, address); });
    ASSERT_TRUE(Becomes(GenTL::DEVICE_ACCESS_STATUS_NOACCESS, "GEV_020102030405"));
    EXPECT_THROW(Open(), CKxGenTLErrorException);
    GenApi::INodeMap& map = *Card()->GetIKxPort()->GetINodeMap();
    const auto set = [&](const char* name, int64_t value) {
        GenApi::CIntegerPtr(map.GetNode(name))->SetValue(value);
    };
    set("DeviceSelector", 0);
    EXPECT_EQ(GenApi::CIntegerPtr(map.GetNode("GevDeviceIPAddress"))->GetValue(), 0x0A010203);
    set("GevDeviceForceIPAddress", 0x7F000009);
    set("GevDeviceForceSubnetMask", 0xFF000000);
    set("GevDeviceForceGateway", 0);
    GenApi::CCommandPtr(map.GetNode("GevDeviceForceIP"))->Execute();
    EXPECT_EQ(address, (Bytes{127, 0, 0, 9}));
    EXPECT_TRUE(Becomes(GenTL::DEVICE_ACCESS_STATUS_READWRITE, "GEV_020102030405"));
}

TEST_F(GigeCamera, NonsenseInAnswersIsNoCameraAndNoCrash)
{
    std::mt19937 random(5); // NOLINT(cert-msc51-cpp): the same bytes each time
    std::atomic<int> nAnswers{0};
    const Impostor camera([&](const Bytes& question) {
        std::vector<Bytes> answers;
        for (int i = 0; i < 200; ++i, ++nAnswers) {
            Bytes bytes(random() % 300);
            for (uint8_t& byte : bytes)
                byte = static_cast<uint8_t>(random());
            if (bytes.size() > 8 && question.size() >= 8 &&
                i % 2 == 0) // the right header, but for the length
                bytes[0] = bytes[1] = bytes[2] = 0, bytes[3] = 3, bytes[6] = question[6],
                bytes[7] = question[7];
            answers.push_back(bytes);
        }
        return answers;
    });
    IKxInterface* const pCard = Card();
    for (int i = 0; i < 5; ++i)
        pCard->UpdateDeviceList();
    EXPECT_TRUE(Eventually([&] { return nAnswers >= 1000; })) << "a search doesn't wait for all of them";
}

} // namespace
} // namespace KxTest
