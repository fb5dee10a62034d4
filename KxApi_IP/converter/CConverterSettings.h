// SPDX-License-Identifier: Apache-2.0
// The settings of a converter, and their nodes.
#pragma once

#include <Base/GCSynch.h>
#include <GenApi/INodeMap.h>
#include <GenApi/IPort.h>
#include <GenApi/NodeMapRef.h>
#include <KxSDKCommon/KxMutex.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace KxApi
{
namespace Detail
{

/// In the order of the table in CConverterSettings.cpp.
enum class ESetting : size_t
{
    DestinationPixelFormat,
    AvailableUnvisibleDestinationPixelFomat,
    BayerInterpolationMethod,
    BitExpansionMode,
    Gamma,
    ReverseY,
    PolarizationImageTransformationMethod,
    PolarizationSpecifiedAngle,
    PolarizationSpecifiedAngleInterpolationMethod,
    ADOLPDarkMode,
    ADOLPColorInversion,
    ADOLPColorPhase,
    ColorMapType,
    ColorMapInversion,
    ColorMapPhase,
    Count
};

/// A value for each setting. Doubles hold all of them exactly: codes, numbers, flags and reals.
class CSettingValues
{
public:
    double& operator[](ESetting setting) { return m_values[static_cast<size_t>(setting)]; }

    template <class T>
    T Get(ESetting setting) const
    {
        return static_cast<T>(m_values[static_cast<size_t>(setting)]);
    }
    /// Codes use all 32 bits, which enumerations are not cast to from double.
    template <class T>
    T GetEnum(ESetting setting) const
    {
        return static_cast<T>(static_cast<int64_t>(m_values[static_cast<size_t>(setting)]));
    }

    bool operator==(const CSettingValues& other) const { return m_values == other.m_values; }

private:
    std::array<double, static_cast<size_t>(ESetting::Count)> m_values{};
};

/// The settings, and the port that serves them as registers of a node map. Any thread.
class CConverterSettings final : public GenApi::IPort
{
public:
    CConverterSettings();
    CConverterSettings(const CConverterSettings&) = delete;
    CConverterSettings& operator=(const CConverterSettings&) = delete;
    ~CConverterSettings() override = default;

    CSettingValues GetAll() const;

    /// Stores the value, unless it is there already, and lets the node map know. Raises OutOfRangeException,
    /// or InvalidArgumentException for a destination format that isn't written.
    void Set(ESetting setting, double value);

    GenApi::INodeMap* GetINodeMap();

    /// The port, called by the node map with its lock held.
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void* pBuffer, int64_t Address, int64_t Length) override;
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override;

private:
    /// Tells whether the value is another than before.
    bool Store(ESetting setting, double value);

    // Guards the values for the moment of a copy; nothing else is taken while it is held.
    mutable GenICam::CLock m_lock;
    CSettingValues m_values KXGC_GUARDED_BY(m_lock);

    CKxMutex m_mutexNodeMap; // held while the map is made
    GenApi::CNodeMapRef m_nodeMap KXGC_GUARDED_BY(m_mutexNodeMap){"Converter"};
    std::atomic<GenApi::INodeMap*> m_pNodeMap{nullptr}; // set once the map is complete
};

} // namespace Detail
} // namespace KxApi
