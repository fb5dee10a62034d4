// SPDX-License-Identifier: Apache-2.0

#include "Camera.h"

#include "Features.h"
#include "common/modules/Stream.h"
#include "image/JpegEncoder.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace KxSim
{
namespace
{

std::vector<const CFeatureGroup*> GroupsOf(const CCameraModel& model)
{
    std::vector<const CFeatureGroup*> groups = {
        &kDeviceFeatures, &kImageFormatFeatures, &kComponentFeatures, &kAcquisitionFeatures, &kAnalogFeatures,
        &kSceneFeatures,  &kChunkFeatures,       &kEventFeatures,     &kTransportFeatures,   &kFaultFeatures};
    if (model.hasAllKinds)
        groups.push_back(&kAllKindsFeatures);
    groups.push_back(&kUserSetFeatures);
    return groups;
}

std::string IdOf(const CCameraModel& model) { return Format("%s_%s", model.model, model.serial); }

EByteOrder OrderOf(ETechnology technology)
{
    return technology == ETechnology::U3V ? EByteOrder::Little : EByteOrder::Big;
}

// Images between two tellings of their number: at high rates each of them would be too often.
constexpr uint64_t kInvalidateEvery = 10;

std::chrono::nanoseconds Microseconds(double value)
{
    return std::chrono::nanoseconds(static_cast<int64_t>(value * 1000));
}

} // namespace

void CCameraPort::CheckAccess(uint64_t address, bool) { m_camera.CheckAccess(address); }

void CCameraPort::ReadFile(uint64_t offset, void* data, size_t size) const
{
    const std::lock_guard<std::mutex> lock(Mutex());
    m_camera.CheckAccess(Facts().fileAddress);
    CPort::ReadFile(offset, data, size);
}

CCamera::CCamera(const CCameraModel& model)
    : m_model(model)
    , m_id(IdOf(model))
    , m_port(*this, {m_id, model.model, TlType(model.technology), "Device", "Device"},
             OrderOf(model.technology))
    , m_accessLock(m_id)
    , m_ip(model.ip)
{
    const std::vector<const CFeatureGroup*> groups = GroupsOf(model);
    CFeatureList list;
    for (const CFeatureGroup* group : groups)
        group->describe(model, list);
    m_port.Publish(list, {model.model, model.about, "Device", std::string("00000000") + model.serial},
                   model.isZipped);
    for (const CFeatureGroup* group : groups)
        group->bind(*this);
}

CCamera::~CCamera() { Close(); }

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
    return IsBack();
}

void CCamera::SetPlugged(bool isPlugged)
{
    const std::lock_guard<std::mutex> lock(m_port.Mutex());
    if (isPlugged)
        m_isPlugged = true;
    else
        Unplug(std::chrono::milliseconds(0));
}

void CCamera::Open(ICameraListener* listener)
{
    const std::lock_guard<std::mutex> lock(m_port.Mutex());
    m_listener = listener;
    m_isClosing = m_isLost = false;
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

void CCamera::AskForChange(const std::string& feature, const std::string& value)
{
    if (m_listener)
        m_listener->OnChangeWanted(feature, value);
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
    if (JpegQuality() > 0)
        s.format = &FormatOfName("RGB8");
    for (size_t i = 0; map.Has("BalanceRatioReg") && i < s.balance.size(); ++i)
        s.balance[i] = map.GetReal("BalanceRatioReg", i);
    return s;
}

std::vector<CPartInfo> CCamera::Parts(const CFrameSettings& settings)
{
    return PlanParts(m_model.parts, settings, EnabledComponents());
}

size_t CCamera::PayloadSize()
{
    const CFrameSettings settings = FrameSettings();
    const size_t imageSize = JpegQuality() > 0 ? MaxJpegSize(settings.width, settings.height)
                                               : PartsSize(Parts(settings), settings);
    CFrameInfo info;
    return imageSize + ChunkTail(settings, imageSize, info).size();
}

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

void CCamera::Compress(const CFrameSettings& settings, uint64_t image, int quality)
{
    m_pixels.resize(settings.ImageSize());
    m_renderer.Prepare(settings);
    m_renderer.Fill(image, m_pixels.data(), m_pixels.size());
    EncodeJpeg(m_pixels, settings.width, settings.height, quality, m_encoded);
}

void CCamera::TakeImage(std::unique_lock<std::mutex>& lock)
{
    const uint64_t acquisition = m_acquisition, image = m_images++;
    const CFrameSettings settings = FrameSettings();
    const int quality = JpegQuality();
    if (quality > 0) { // ahead of all else: what comes behind the image depends on its size
        lock.unlock();
        Compress(settings, image, quality);
        lock.lock();
        if (m_acquisition != acquisition)
            return;
    }
    CFrameInfo info;
    // GigE Vision counts from 1.
    info.frameId = image + (m_model.technology == ETechnology::GEV ? 1 : 0);
    info.timestampNs = Timestamp();
    info.width = static_cast<size_t>(settings.width);
    info.height = info.deliveredHeight = static_cast<size_t>(settings.height);
    info.offsetX = static_cast<size_t>(settings.offsetX);
    info.offsetY = static_cast<size_t>(settings.offsetY);
    info.pixelFormat = settings.format->code;
    info.parts = Parts(settings);
    info.payloadType = quality > 0          ? GenTL::PAYLOAD_TYPE_JPEG
                       : info.parts.empty() ? GenTL::PAYLOAD_TYPE_IMAGE
                                            : GenTL::PAYLOAD_TYPE_MULTI_PART;
    const size_t imageSize = quality > 0 ? m_encoded.size() : PartsSize(info.parts, settings);
    const std::string tail = ChunkTail(settings, imageSize, info);
    info.dataSize = imageSize + tail.size();
    info.isIncomplete = IsStruck("KxFaultIncompleteEveryReg", image);
    Notify(EEvent::ExposureEnd, info.frameId);
    if (IsStruck("KxFaultLateEveryReg", image))
        m_changed.wait_for(lock, std::chrono::milliseconds(Registers().GetInteger("KxFaultLateByReg")),
                           [&] { return m_isClosing || m_acquisition != acquisition || !m_isAcquiring; });
    const bool isLost = IsStruck("KxFaultLoseEveryReg", image) || m_isLost;
    const std::shared_ptr<CStream> stream = isLost ? nullptr : m_stream;
    lock.unlock();
    if (stream) {
        stream->Deliver(info, [&](uint8_t* memory, size_t size) {
            const size_t filled = std::min(size, imageSize);
            if (quality > 0) {
                std::memcpy(memory, m_encoded.data(), filled);
            } else {
                m_renderer.Prepare(settings);
                if (info.parts.empty())
                    m_renderer.Fill(image, memory, filled);
                else
                    FillParts(info.parts, settings, image, m_renderer, memory, filled);
            }
            if (size > imageSize)
                std::memcpy(memory + imageSize, tail.data(), size - imageSize);
        });
    }
    lock.lock();
    if (m_acquisition != acquisition)
        return;
    // The first image took the making of the scene, after which the others are not to come in a burst.
    if (m_images == 1)
        m_nextImage = std::max(m_nextImage, Clock::now());
    Registers().SetInteger("KxImageCountReg", static_cast<int64_t>(m_images & 0xFFFFFFFF));
    if (m_images % kInvalidateEvery == 0 || m_imagesLeft == 1)
        Invalidate("KxImageCount");
    if (m_imagesLeft > 0 && --m_imagesLeft == 0) {
        m_isAcquiring = false;
        Notify(EEvent::AcquisitionEnd, m_images - 1);
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
