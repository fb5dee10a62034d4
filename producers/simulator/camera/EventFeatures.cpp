// SPDX-License-Identifier: Apache-2.0
// Events that the camera sends by itself.

#include "Camera.h"
#include "Features.h"

#include <array>

namespace KxSim
{
namespace
{

struct CEventRow
{
    const char *name, *toolTip;
    uint32_t id;
};

// In the order of EEvent.
constexpr std::array<CEventRow, 3> kEvents = {
    {{"ExposureEnd", "The exposure of an image has ended", 0x9001},
     {"AcquisitionEnd", "The last of the wanted images was taken", 0x9002},
     {"Test", "TestEventGenerate was executed", 0x4FFF}}};

std::string EventXml(const CEventRow& row)
{
    const std::string name = std::string("Event") + row.name;
    const char* const n = name.c_str();
    std::string xml =
        Format("<Category Name=\"%sData\" NameSpace=\"Standard\"><ToolTip>Data of the event</ToolTip>"
               "<pFeature>%s</pFeature><pFeature>%sTimestamp</pFeature><pFeature>%sFrameID</pFeature>"
               "</Category>\n",
               n, n, n, n);
    xml +=
        Format("<Integer Name=\"%s\" NameSpace=\"Standard\"><ToolTip>%s; its number</ToolTip>"
               "<Visibility>Expert</Visibility><EventID>%X</EventID><ImposedAccessMode>RO</ImposedAccessMode>"
               "<Value>%u</Value></Integer>\n",
               n, row.toolTip, row.id, row.id);
    const auto value = [&](const char* suffix, const char* tip, const char* unit, unsigned address) {
        xml += Format("<Integer Name=\"%s%s\" NameSpace=\"Standard\"><ToolTip>%s</ToolTip>"
                      "<Visibility>Expert</Visibility><pValue>%s%sReg</pValue>%s</Integer>\n",
                      n, suffix, tip, n, suffix, unit);
        xml += Format(
            "<IntReg Name=\"%s%sReg\"><Address>%u</Address><Length>8</Length><AccessMode>RO</AccessMode>"
            "<pPort>%sPort</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign>"
            "<Endianess>$ORDER</Endianess></IntReg>\n",
            n, suffix, address, n);
    };
    value("Timestamp", "When the last one happened", "<Unit>ns</Unit>", 0);
    value("FrameID", "Image that it was about", "", 8);
    return xml +
           Format("<Port Name=\"%sPort\"><Visibility>Invisible</Visibility><EventID>%X</EventID></Port>\n", n,
                  row.id);
}

void DescribeEvent(const CCameraModel&, CFeatureList& list)
{
    list.Category("EventControl", "What the camera tells by itself");
    std::vector<CEntry> entries;
    for (size_t i = 0; i < kEvents.size(); ++i)
        entries.push_back({kEvents[i].name, static_cast<int64_t>(i), kEvents[i].toolTip});
    list.Add(
        Enumeration("EventSelector", "Which event EventNotification is about").Expert().Entries(entries));
    list.Add(Enumeration("EventNotification", "Whether the event is told")
                 .Expert()
                 .Entries({{"Off", 0, ""}, {"On", 1, ""}})
                 .SelectedBy({"EventSelector"}));
    list.Add(Command("TestEventGenerate", "Sends the event Test, if it is on").Expert());
    for (const CEventRow& row : kEvents)
        list.Raw(EventXml(row), {std::string("Event") + row.name + "Data"});
    list.Add(
        String("KxAskedFeature", "Feature that KxAskForChange is about").Custom().Guru().Default("Gamma"));
    list.Add(String("KxAskedValue", "Value that it is to get").Custom().Guru().Default("1.5"));
    list.Add(
        Command("KxAskForChange", "Lets the producer ask the program to set the feature").Custom().Guru());
    list.Add(Integer("KxImageCount", "Images since the start; the producer tells of each tenth")
                 .Custom()
                 .Guru()
                 .ReadOnly());
}

void BindEvent(CCamera& camera)
{
    CRegisterMap& map = camera.Registers();
    map.At("TestEventGenerateReg").afterWrite = [&](size_t) {
        map.SetInteger("TestEventGenerateReg", 0);
        camera.Notify(EEvent::Test, 0);
    };
    map.At("KxAskForChangeReg").afterWrite = [&](size_t) {
        map.SetInteger("KxAskForChangeReg", 0);
        camera.AskForChange(map.GetText("KxAskedFeatureReg"), map.GetText("KxAskedValueReg"));
    };
}

} // namespace

const CFeatureGroup kEventFeatures = {DescribeEvent, BindEvent};

void CCamera::Notify(EEvent event, uint64_t frameId)
{
    const auto index = static_cast<size_t>(event);
    if (!m_listener || Registers().GetInteger("EventNotificationReg", index) == 0)
        return;
    uint8_t data[16];
    Registers().Encode(Timestamp(), data, 8);
    Registers().Encode(frameId, data + 8, 8);
    m_listener->OnRemoteEvent(kEvents[index].id,
                              std::string(reinterpret_cast<const char*>(data), sizeof data));
}

} // namespace KxSim
