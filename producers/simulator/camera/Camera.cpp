// SPDX-License-Identifier: Apache-2.0

#include "Camera.h"

#include "Features.h"
#include "modules/Stream.h"

#include <algorithm>
#include <cmath>

namespace KxSim
{
namespace
{

constexpr const CFeatureGroup* kGroups[] = {&kDeviceFeatures, &kImageFormatFeatures, &kAcquisitionFeatures,
                                            &kAnalogFeatures, &kSceneFeatures,       &kTransportFeatures};

std::string IdOf(const CCameraModel& model) { return Format("%s_%s", model.model, model.serial); }

EByteOrder OrderOf(ETechnology technology)
{
    return technology == ETechnology::U3V ? EByteOrder::Little : EByteOrder::Big;
}

std::chrono::nanoseconds Microseconds(double value)
{
    return std::chrono::nanoseconds(static_cast<int64_t>(value * 1000));
}

} // namespace

CCamera::CCamera(const CCameraModel& model)
    : m_model(model)
    , m_id(IdOf(model))
    , m_port({m_id, model.model, TlType(model.technology), "Device", "Device"}, OrderOf(model.technology))
    , m_accessLock(m_id)
    , m_ip(model.ip)
{
    CFeatureList list;
    for (const CFeatureGroup* group : kGroups)
        group->describe(model, list);
    m_port.Publish(list, {model.model, model.about, "Device", std::string("00000000") + model.serial},
                   model.isZipped);
    for (const CFeatureGroup* group : kGroups)
        group->bind(*this);
    m_port.check = [this](uint64_t address, bool) { CheckAccess(address); };
}

CCamera::~CCamera() { Close(); }

void CCamera::CheckAccess(uint64_t) const
{
    if (!IsStillPlugged())
        Fail(GenTL::GC_ERR_IO, "Camera '%s' is unplugged", m_id.c_str());
}

CIpConfig CCamera::GetIp() const
{
    const std::lock_guard<std::mutex> lock(m_port.Mutex());
    return m_ip;
}

void CCamera::ForceIp(const CIpConfig& config)
{
    const std::lock_guard<std::mutex> lock(m_port.Mutex());
    m_ip = config.address == 0 ? m_model.ip : config;
}

std::string CCamera::GetUserId()
{
    const std::lock_guard<std::mutex> lock(m_port.Mutex());
    return Registers().GetText("DeviceUserIDReg");
}

bool CCamera::IsPlugged() const
{
    const std::lock_guard<std::mutex> lock(m_port.Mutex());
    return IsStillPlugged();
}

void CCamera::SetPlugged(bool isPlugged)
{
    const std::lock_guard<std::mutex> lock(m_port.Mutex());
    if (isPlugged)
        m_isPlugged = true;
    else
        Unplug(std::chrono::milliseconds(0));
}

void CCamera::Unplug(std::chrono::milliseconds replugAfter)
{
    m_isPlugged = false;
    m_replugTime = replugAfter.count() > 0 ? Clock::now() + replugAfter : Clock::time_point::max();
    m_isAcquiring = false;
    m_changed.notify_all();
    if (m_listener)
        m_listener->OnLost();
}

void CCamera::Open(ICameraListener* listener)
{
    const std::lock_guard<std::mutex> lock(m_port.Mutex());
    m_listener = listener;
    m_isClosing = false;
    m_thread = std::thread([this] { Run(); });
}

void CCamera::Close()
{
    {
        const std::lock_guard<std::mutex> lock(m_port.Mutex());
        m_listener = nullptr;
        m_isClosing = true;
        m_isAcquiring = false;
        Registers().SetInteger("TLParamsLockedReg", 0);
    }
    m_changed.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

void CCamera::SetStream(std::shared_ptr<CStream> stream)
{
    const std::lock_guard<std::mutex> lock(m_port.Mutex());
    m_stream = std::move(stream);
}

void CCamera::StartAcquisition()
{
    if (m_isAcquiring)
        Fail(GenTL::GC_ERR_BUSY, "Camera '%s' is taking images already", m_id.c_str());
    CRegisterMap& map = Registers();
    const int64_t mode = map.GetInteger("AcquisitionModeReg");
    m_imagesLeft = mode == 0 ? 1 : mode == 1 ? map.GetInteger("AcquisitionFrameCountReg") : -1;
    m_isAcquiring = true;
    ++m_acquisition;
    m_images = 0;
    m_triggers = 0;
    m_nextImage = Clock::now() + Microseconds(map.GetReal("ExposureTimeReg"));
    m_changed.notify_all();
}

void CCamera::StopAcquisition()
{
    m_isAcquiring = false;
    m_changed.notify_all();
}

void CCamera::Trigger()
{
    if (!m_isAcquiring || !IsTriggered())
        return; // nobody waits for it
    ++m_triggers;
    m_changed.notify_all();
}

void CCamera::ChangeSettings() { m_changed.notify_all(); }

void CCamera::RefuseWhileAcquiring() const
{
    if (m_isAcquiring)
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "Camera '%s' is taking images, whose size can't change now",
             m_id.c_str());
}

void CCamera::FindExposure()
{
    const double gain = std::pow(10.0, Registers().GetReal("GainReg") / 20);
    Registers().SetReal("ExposureTimeReg", CFrameRenderer::kUsualExposureUs / gain);
    Invalidate("ExposureTime");
}

void CCamera::Invalidate(const std::string& feature)
{
    if (m_listener)
        m_listener->OnFeatureChanged(feature);
}

void CCamera::SendEvent(uint64_t id, const std::string& data)
{
    if (m_listener)
        m_listener->OnRemoteEvent(id, data);
}

uint64_t CCamera::Timestamp() const
{
    return static_cast<uint64_t>(std::chrono::nanoseconds(Clock::now() - m_born).count());
}

CFrameSettings CCamera::FrameSettings()
{
    CRegisterMap& map = Registers();
    const auto integer = [&](const char* name) { return static_cast<int>(map.GetInteger(name)); };
    CFrameSettings s;
    s.format = FormatOfCode(static_cast<uint32_t>(map.GetInteger("PixelFormatReg")));
    s.mosaic = m_model.mosaic;
    s.isPolarized = m_model.isPolarized;
    s.sensorWidth = m_model.width;
    s.sensorHeight = m_model.height;
    s.width = integer("WidthReg");
    s.height = integer("HeightReg");
    s.offsetX = integer("OffsetXReg");
    s.offsetY = integer("OffsetYReg");
    s.stepX = integer("BinningHorizontalReg") * integer("DecimationHorizontalReg");
    s.stepY = integer("BinningVerticalReg") * integer("DecimationVerticalReg");
    s.isAveraged = integer("BinningHorizontalReg") > 1 || integer("BinningVerticalReg") > 1;
    s.isReversedX = map.GetFlag("ReverseXReg");
    s.isReversedY = map.GetFlag("ReverseYReg");
    s.source = static_cast<ESource>(integer("KxSceneSourceReg"));
    s.pattern = static_cast<ETestPattern>(integer("TestPatternReg"));
    s.folder = map.GetText("KxSceneFolderReg");
    s.scenePixels = integer("KxSceneStepReg");
    s.isNoisy = map.GetFlag("KxSensorNoiseReg");
    s.exposureUs = map.GetReal("ExposureTimeReg");
    s.gainDb = map.GetReal("GainReg");
    s.blackLevel = map.GetReal("BlackLevelReg");
    s.gamma = map.GetReal("GammaReg");
    for (size_t i = 0; map.Has("BalanceRatioReg") && i < s.balance.size(); ++i)
        s.balance[i] = map.GetReal("BalanceRatioReg", i);
    return s;
}

size_t CCamera::PayloadSize() { return FrameSettings().ImageSize(); }

double CCamera::FrameRateLimit()
{
    constexpr double kOverheadUs = 20;
    const double lines = static_cast<double>(Registers().GetInteger("HeightReg"));
    const double readoutUs = lines * m_model.lineUs + kOverheadUs;
    return 1e6 / std::max(readoutUs, Registers().GetReal("ExposureTimeReg"));
}

std::chrono::nanoseconds CCamera::Period()
{
    CRegisterMap& map = Registers();
    const double limit = FrameRateLimit();
    const double rate = map.GetFlag("AcquisitionFrameRateEnableReg")
                            ? std::min(limit, map.GetReal("AcquisitionFrameRateReg"))
                            : limit;
    return Microseconds(1e6 / rate);
}

bool CCamera::WaitForImage(std::unique_lock<std::mutex>& lock)
{
    const uint64_t acquisition = m_acquisition;
    const auto isOver = [&] { return m_isClosing || !m_isAcquiring || m_acquisition != acquisition; };
    const bool isTriggered = IsTriggered();
    if (isTriggered) {
        m_changed.wait(lock, [&] { return isOver() || m_triggers > 0 || !IsTriggered(); });
        if (isOver() || !IsTriggered())
            return false;
        --m_triggers;
        m_nextImage = Clock::now() + Microseconds(Registers().GetReal("TriggerDelayReg") +
                                                  Registers().GetReal("ExposureTimeReg"));
    }
    while (!isOver() && Clock::now() < m_nextImage) {
        m_changed.wait_until(lock, m_nextImage);
        if (!isTriggered) // the rate may have changed
            m_nextImage = std::min(m_nextImage, Clock::now() + Period());
    }
    if (isOver() || IsTriggered() != isTriggered)
        return false;
    if (!isTriggered) {
        m_nextImage += Period();
        // What can't be caught up is skipped.
        constexpr auto kLatest = std::chrono::milliseconds(200);
        if (const auto now = Clock::now(); m_nextImage < now - kLatest)
            m_nextImage = now;
    }
    return true;
}

void CCamera::TakeImage(std::unique_lock<std::mutex>& lock)
{
    const uint64_t acquisition = m_acquisition;
    const CFrameSettings settings = FrameSettings();
    CFrameInfo info;
    info.frameId = m_images++;
    info.timestampNs = Timestamp();
    info.width = static_cast<size_t>(settings.width);
    info.height = info.deliveredHeight = static_cast<size_t>(settings.height);
    info.offsetX = static_cast<size_t>(settings.offsetX);
    info.offsetY = static_cast<size_t>(settings.offsetY);
    info.pixelFormat = settings.format->code;
    info.dataSize = settings.ImageSize();
    const std::shared_ptr<CStream> stream = m_stream;
    lock.unlock();
    if (stream) {
        stream->Deliver(info, [&](uint8_t* memory) {
            m_renderer.Prepare(settings);
            m_renderer.Fill(info.frameId, memory);
        });
    }
    lock.lock();
    if (m_acquisition == acquisition && m_imagesLeft > 0 && --m_imagesLeft == 0) {
        m_isAcquiring = false;
        Invalidate("AcquisitionStatus");
    }
}

void CCamera::Run()
{
    std::unique_lock<std::mutex> lock(m_port.Mutex());
    while (!m_isClosing) {
        if (!m_isAcquiring)
            m_changed.wait(lock, [this] { return m_isClosing || m_isAcquiring; });
        else if (WaitForImage(lock))
            TakeImage(lock);
    }
}

} // namespace KxSim
