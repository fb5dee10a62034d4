// SPDX-License-Identifier: Apache-2.0
// A simulated camera: it is there whether or not anybody opens it.
#pragma once

#include "camera/AccessLock.h"
#include "camera/CameraModel.h"
#include "common/modules/FeaturePort.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace KxProducer
{
class CStream;
struct CFrameInfo;
} // namespace KxProducer

namespace KxSim
{

class CCamera;

enum class EEvent
{
    ExposureEnd,
    AcquisitionEnd,
    Test
};

/// Who hears what the camera has to tell: the open device. Called with the lock of the camera's port held.
class ICameraListener
{
public:
    virtual void OnFeatureChanged(const std::string& name) = 0;
    virtual void OnChangeWanted(const std::string& name, const std::string& value) = 0;
    virtual void OnRemoteEvent(uint64_t id, const std::string& data) = 0;
    virtual void OnLost() = 0;

protected:
    ~ICameraListener() = default;
};

/// Its registers, with what may be wrong with them.
class CCameraPort final : public CFeaturePort
{
public:
    CCameraPort(CCamera& camera, CPortFacts facts, EByteOrder order)
        : CFeaturePort(std::move(facts), order)
        , m_camera(camera)
    {}

    bool NeedsProducerLock() const override { return false; }
    void SetReadOnly(bool isReadOnly) { m_isReadOnly = isReadOnly; }
    /// From now on only half of the description can be had.
    void SetTruncated(bool isTruncated) { m_isTruncated = isTruncated; }
    bool IsTruncated() const { return m_isTruncated; }

protected:
    void CheckAccess(uint64_t address, bool isWrite) override;
    void ReadFile(uint64_t offset, void* data, size_t size) const override;
    bool CanWrite() const override { return !m_isReadOnly; }
    size_t FileSize() const override { return CPort::FileSize() / (m_isTruncated ? 2 : 1); }

private:
    const CCamera& m_camera;
    std::atomic<bool> m_isReadOnly{false};
    std::atomic<bool> m_isTruncated{false};
};

/// Everything but Port() and the constants belongs to the lock of the port, unless it says otherwise.
class CCamera
{
public:
    using Clock = std::chrono::steady_clock;

    explicit CCamera(const CCameraModel& model);
    ~CCamera();
    CCamera(const CCamera&) = delete;
    CCamera& operator=(const CCamera&) = delete;

    const CCameraModel& Model() const { return m_model; }
    const std::string& Id() const { return m_id; }
    CCameraPort& Port() { return m_port; }
    CRegisterMap& Registers() { return m_port.Registers(); }
    /// Its lock against other processes. Not of the port's lock: of whoever opens and lists.
    CAccessLock& AccessLock() { return m_accessLock; }

    /// Current and first address. Taken and given without a lock held.
    CIpConfig GetIp() const;
    void ForceIp(const CIpConfig& config);
    std::string GetUserId();
    bool IsPlugged() const;
    void SetPlugged(bool isPlugged);
    /// Whether only half of the description can be had.
    bool IsTruncated() const { return m_port.IsTruncated(); }
    void SetTruncated(bool isTruncated) { m_port.SetTruncated(isTruncated); }

    /// From opening to closing, a thread takes images. Without a lock held.
    void Open(ICameraListener* listener);
    void Close();
    /// Where images go, or null. Without a lock held.
    void SetStream(std::shared_ptr<CStream> stream);

    /// Throws when a register, or the description, can't be reached.
    void CheckAccess(uint64_t address) const;

    // For the features.
    // -----------------------------------------------------------------------------------------
    void StartAcquisition();
    void StopAcquisition();
    bool IsAcquiring() const { return m_isAcquiring; }
    /// Takes an image when triggers are waited for.
    void Trigger();
    /// When images are due has changed.
    void ChangeSettings();
    void RefuseWhileAcquiring() const;
    void FindExposure();
    const CIpConfig& Ip() const { return m_ip; }
    void Invalidate(const std::string& feature);
    void AskForChange(const std::string& feature, const std::string& value);
    /// Sends an event, if it is wanted.
    void Notify(EEvent event, uint64_t frameId);
    /// The camera vanishes. Whoever has it open gets errors until it is closed, also when it is back.
    void Unplug(std::chrono::milliseconds replugAfter);
    void SetFailingRegister(const CRegister* failing) { m_failingRegister = failing; }
    void SaveSettings(int64_t set);
    void LoadSettings(int64_t set);
    /// Nanoseconds since the camera came to life.
    uint64_t Timestamp() const;
    void ResetTimestamp() { m_born = Clock::now(); }
    size_t PayloadSize();
    /// Bits by the components' numbers.
    uint32_t EnabledComponents();
    static size_t MaxChunks();
    CFrameSettings FrameSettings();
    /// 0 while images aren't compressed.
    int JpegQuality();
    double FrameRateLimit();

private:
    void Run();
    bool WaitForImage(std::unique_lock<std::mutex>& lock);
    void TakeImage(std::unique_lock<std::mutex>& lock);
    bool IsStillPlugged() const { return !m_isLost && IsBack(); }
    bool IsBack() const { return m_isPlugged || Clock::now() >= m_replugTime; }
    /// What comes behind an image; tells the chunks in `info`.
    std::string ChunkTail(const CFrameSettings& settings, size_t imageSize, CFrameInfo& info);
    std::vector<CPartInfo> Parts(const CFrameSettings& settings);
    /// Makes an image and compresses it, in the camera's thread without the lock.
    void Compress(const CFrameSettings& settings, uint64_t image, int quality);
    /// Whether a fault strikes each image of a number, and this one.
    bool IsStruck(const char* faultRegister, uint64_t image);
    bool IsTriggered() { return Registers().GetInteger("TriggerModeReg") == 1; }
    std::chrono::nanoseconds Period();

    const CCameraModel m_model;
    const std::string m_id;
    Clock::time_point m_born = Clock::now();
    CCameraPort m_port;
    CAccessLock m_accessLock;
    CIpConfig m_ip;
    bool m_isPlugged = true;
    bool m_isLost = false; // unplugged since it was opened
    const CRegister* m_failingRegister = nullptr;
    std::map<int64_t, std::map<std::string, std::vector<uint8_t>>> m_settings; // user sets: bytes by register
    Clock::time_point m_replugTime = Clock::time_point::max();

    ICameraListener* m_listener = nullptr;
    std::shared_ptr<CStream> m_stream;
    std::condition_variable m_changed;
    std::thread m_thread;
    bool m_isClosing = false;
    bool m_isAcquiring = false;
    uint64_t m_acquisition = 0; // counts the starts
    uint64_t m_triggers = 0;    // waiting
    uint64_t m_images = 0;      // since the start
    int64_t m_imagesLeft = 0;   // of a counted acquisition
    Clock::time_point m_nextImage;

    // Of the thread.
    CFrameRenderer m_renderer;
    std::vector<uint8_t> m_pixels, m_encoded; // of a compressed image
};

} // namespace KxSim
