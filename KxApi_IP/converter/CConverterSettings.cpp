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
    EKind eKind;
    const char* szName; ///< of the feature; its register has "Reg" behind it
    double dMin;
    double dMax;
    double dInitial;
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

const CSettingRow& Row(ESetting eSetting) { return kRows[static_cast<size_t>(eSetting)]; }

int64_t RegisterLength(const CSettingRow& row) { return row.eKind == EKind::Real ? 8 : 4; }

ESetting SettingAt(int64_t nAddress, int64_t nLength)
{
    for (size_t i = 0; i < std::size(kRows); ++i) {
        if (kRows[i].nAddress == nAddress && RegisterLength(kRows[i]) == nLength)
            return static_cast<ESetting>(i);
    }
    throw INVALID_ARGUMENT_EXCEPTION("The converter has no register of %lld bytes at 0x%llX",
                                     static_cast<long long>(nLength), static_cast<long long>(nAddress));
}

void CheckRange(const CSettingRow& row, double dValue)
{
    const bool bIsReal = row.eKind == EKind::Real;
    // Negated, so that what is no number fails too.
    if (!(dValue >= row.dMin)) {
        if (bIsReal)
            throw OUT_OF_RANGE_EXCEPTION("%s = %f must be greater than or equal %f", row.szName, dValue,
                                         row.dMin);
        throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be equal or greater than Min = %lld", row.szName,
                                     static_cast<long long>(dValue), static_cast<long long>(row.dMin));
    }
    if (!(dValue <= row.dMax)) {
        if (bIsReal)
            throw OUT_OF_RANGE_EXCEPTION("%s = %f must be smaller than or equal %f", row.szName, dValue,
                                         row.dMax);
        throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be equal or smaller than Max = %lld", row.szName,
                                     static_cast<long long>(dValue), static_cast<long long>(row.dMax));
    }
}

void CheckDestination(double dValue)
{
    const auto nCode = static_cast<uint32_t>(dValue);
    if (!FindDestinationFormat(static_cast<EKxPixelFormatNamingConvention_t>(nCode)))
        throw INVALID_ARGUMENT_EXCEPTION(
            "DestinationPixelFormat = 0x%08X is no format that can be converted to", nCode);
}

} // namespace

CConverterSettings::CConverterSettings()
{
    for (size_t i = 0; i < std::size(kRows); ++i)
        m_objValues[static_cast<ESetting>(i)] = kRows[i].dInitial;
}

CSettingValues CConverterSettings::GetAll() const
{
    const GenICam::AutoLock lock(m_lock);
    return m_objValues;
}

bool CConverterSettings::Store(ESetting eSetting, double dValue)
{
    CheckRange(Row(eSetting), dValue);
    if (eSetting == ESetting::DestinationPixelFormat)
        CheckDestination(dValue);
    const GenICam::AutoLock lock(m_lock);
    double& dStored = m_objValues[eSetting];
    const bool bIsNew = dStored != dValue;
    dStored = dValue;
    return bIsNew;
}

void CConverterSettings::Set(ESetting eSetting, double dValue)
{
    if (!Store(eSetting, dValue))
        return;
    if (GenApi::INodeMap* const pNodeMap = m_pNodeMap) {
        const GenICam::gcstring strRegister = GenICam::gcstring(Row(eSetting).szName) + "Reg";
        if (GenApi::INode* const pNode = pNodeMap->GetNode(strRegister))
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
            GenApi::CNodeMapRef objNodeMap("Converter");
            objNodeMap._LoadXMLFromString(kConverterXml);
            objNodeMap._Connect(this, "ConverterPort");
            m_objNodeMap = objNodeMap;
            m_pNodeMap = m_objNodeMap._Ptr;
        }
        return m_pNodeMap;
    });
}

void CConverterSettings::Read(void* pBuffer, int64_t Address, int64_t Length)
{
    const ESetting eSetting = SettingAt(Address, Length);
    const CSettingValues objValues = GetAll();
    if (Row(eSetting).eKind == EKind::Real) {
        const auto dValue = objValues.Get<double>(eSetting);
        std::memcpy(pBuffer, &dValue, sizeof(dValue));
    } else {
        const auto nValue = objValues.Get<uint32_t>(eSetting);
        std::memcpy(pBuffer, &nValue, sizeof(nValue));
    }
}

void CConverterSettings::Write(const void* pBuffer, int64_t Address, int64_t Length)
{
    const ESetting eSetting = SettingAt(Address, Length);
    if (Row(eSetting).eKind == EKind::Real) {
        double dValue = 0;
        std::memcpy(&dValue, pBuffer, sizeof(dValue));
        Store(eSetting, dValue);
        return;
    }
    uint32_t nValue = 0;
    std::memcpy(&nValue, pBuffer, sizeof(nValue));
    Store(eSetting, Row(eSetting).eKind == EKind::Flag ? nValue != 0 : nValue);
}

} // namespace Detail
} // namespace KxApi
