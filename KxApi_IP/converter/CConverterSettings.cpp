// SPDX-License-Identifier: Apache-2.0
#include "CConverterSettings.h"

#include "DestinationFormats.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>
#include <GenApi/INode.h>

#include <cstring>
#include <iterator>
#include <string>

namespace KxApi
{
namespace Detail
{

/// The description of the nodes, resources/Kestrix_PixelFormatConverter_Rev1.xml.
extern const char kConverterXml[];

namespace
{

enum class EKind : uint8_t
{
    Number, ///< 4 bytes unsigned
    Flag,   ///< 4 bytes, all but 0 being 1
    Real    ///< 8 bytes of floating point
};

struct CSettingRow
{
    int64_t nAddress;
    EKind kind;
    const char* name; ///< of the feature; its register has "Reg" behind it
    double min;
    double max;
    double initial;
};

// clang-format off
constexpr CSettingRow kRows[] = {
    {0x1000, EKind::Number, "DestinationPixelFormat",                        0, 0xFFFFFFFF, KxPixelFormat_BGR8},
    {0x1010, EKind::Number, "AvailableUnvisibleDestinationPixelFomat",       0, 1, 1},
    {0x1020, EKind::Number, "BayerInterpolationMethod",                      0, 7, 3},
    {0x1030, EKind::Number, "BitExpansionMode",                              0, 2, 0},
    {0x1040, EKind::Real,   "Gamma",                                         0.1, 10, 1},
    {0x1050, EKind::Flag,   "ReverseY",                                      0, 1, 0},
    {0x1060, EKind::Number, "PolarizationImageTransformationMethod",         0, 10, 0},
    {0x1070, EKind::Real,   "PolarizationSpecifiedAngle",                    0, 180, 0},
    {0x1080, EKind::Number, "PolarizationSpecifiedAngleInterpolationMethod", 0, 1, 0},
    {0x1090, EKind::Flag,   "ADOLPDarkMode",                                 0, 1, 0},
    {0x10A0, EKind::Flag,   "ADOLPColorInversion",                           0, 1, 0},
    {0x10B0, EKind::Number, "ADOLPColorPhase",                               0, 255, 0},
    {0x10C0, EKind::Number, "ColorMapType",                                  0, 2, 0},
    {0x10D0, EKind::Flag,   "ColorMapInversion",                             0, 1, 0},
    {0x10E0, EKind::Number, "ColorMapPhase",                                 0, 255, 0},
};
// clang-format on
static_assert(std::size(kRows) == static_cast<size_t>(ESetting::Count));

const CSettingRow& Row(ESetting setting) { return kRows[static_cast<size_t>(setting)]; }

int64_t RegisterLength(const CSettingRow& row) { return row.kind == EKind::Real ? 8 : 4; }

ESetting SettingAt(int64_t nAddress, int64_t nLength)
{
    for (size_t i = 0; i < std::size(kRows); ++i) {
        if (kRows[i].nAddress == nAddress && RegisterLength(kRows[i]) == nLength)
            return static_cast<ESetting>(i);
    }
    throw INVALID_ARGUMENT_EXCEPTION("The converter has no register of %lld bytes at 0x%llX",
                                     static_cast<long long>(nLength), static_cast<long long>(nAddress));
}

void CheckRange(const CSettingRow& row, double value)
{
    const bool isReal = row.kind == EKind::Real;
    // Negated, so that what is no number fails too.
    if (!(value >= row.min)) {
        if (isReal)
            throw OUT_OF_RANGE_EXCEPTION("%s = %f must be greater than or equal %f", row.name, value,
                                         row.min);
        throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be equal or greater than Min = %lld", row.name,
                                     static_cast<long long>(value), static_cast<long long>(row.min));
    }
    if (!(value <= row.max)) {
        if (isReal)
            throw OUT_OF_RANGE_EXCEPTION("%s = %f must be smaller than or equal %f", row.name, value,
                                         row.max);
        throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be equal or smaller than Max = %lld", row.name,
                                     static_cast<long long>(value), static_cast<long long>(row.max));
    }
}

void CheckDestination(double value)
{
    const auto nCode = static_cast<uint32_t>(value);
    if (!FindDestinationFormat(static_cast<EKxPixelFormatNamingConvention_t>(nCode)))
        throw INVALID_ARGUMENT_EXCEPTION(
            "DestinationPixelFormat = 0x%08X is no format that can be converted to", nCode);
}

} // namespace

CConverterSettings::CConverterSettings()
{
    for (size_t i = 0; i < std::size(kRows); ++i)
        m_values[static_cast<ESetting>(i)] = kRows[i].initial;
}

CSettingValues CConverterSettings::GetAll() const
{
    const GenICam::AutoLock lock(m_lock);
    return m_values;
}

bool CConverterSettings::Store(ESetting setting, double value)
{
    CheckRange(Row(setting), value);
    if (setting == ESetting::DestinationPixelFormat)
        CheckDestination(value);
    const GenICam::AutoLock lock(m_lock);
    double& stored = m_values[setting];
    const bool isNew = stored != value;
    stored = value;
    return isNew;
}

void CConverterSettings::Set(ESetting setting, double value)
{
    if (!Store(setting, value))
        return;
    if (GenApi::INodeMap* const pNodeMap = m_pNodeMap) {
        const GenICam::gcstring registerName = GenICam::gcstring(Row(setting).name) + "Reg";
        if (GenApi::INode* const pNode = pNodeMap->GetNode(registerName))
            pNode->InvalidateNode();
    }
}

GenApi::INodeMap* CConverterSettings::GetINodeMap()
{
    // Callbacks of nodes come here too, with the map's lock held: they must not wait for the making of a map.
    if (GenApi::INodeMap* const pNodeMap = m_pNodeMap)
        return pNodeMap;
    return GenICam::GuardBadAlloc([this]() -> GenApi::INodeMap* {
        const CKxMutexLock lock(m_mutexNodeMap);
        if (!m_pNodeMap) {
            GenApi::CNodeMapRef nodeMap("Converter");
            nodeMap._LoadXMLFromString(kConverterXml);
            nodeMap._Connect(this, "ConverterPort");
            m_nodeMap = nodeMap;
            m_pNodeMap = m_nodeMap._Ptr;
        }
        return m_pNodeMap;
    });
}

void CConverterSettings::Read(void* pBuffer, int64_t Address, int64_t Length)
{
    const ESetting setting = SettingAt(Address, Length);
    const CSettingValues values = GetAll();
    if (Row(setting).kind == EKind::Real) {
        const auto value = values.Get<double>(setting);
        std::memcpy(pBuffer, &value, sizeof(value));
    } else {
        const auto nValue = values.Get<uint32_t>(setting);
        std::memcpy(pBuffer, &nValue, sizeof(nValue));
    }
}

void CConverterSettings::Write(const void* pBuffer, int64_t Address, int64_t Length)
{
    const ESetting setting = SettingAt(Address, Length);
    if (Row(setting).kind == EKind::Real) {
        double value = 0;
        std::memcpy(&value, pBuffer, sizeof(value));
        Store(setting, value);
        return;
    }
    uint32_t nValue = 0;
    std::memcpy(&nValue, pBuffer, sizeof(nValue));
    Store(setting, Row(setting).kind == EKind::Flag ? nValue != 0 : nValue);
}

} // namespace Detail
} // namespace KxApi
