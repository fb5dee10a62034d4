// SPDX-License-Identifier: Apache-2.0
// Node map of the system.

#include "ModuleFeatures.h"

#include <algorithm>

namespace KxProducer
{

void PublishSystem(CFeaturePort& port, const CDescriptionHead& head, size_t maxAdapters,
                   std::function<std::vector<const CAdapterFacts*>()> adapters, std::function<void()> update)
{
    CFeatureList list;
    list.Category("SystemInformation", "The producer");
    const auto text = [&](const char* name, const char* tip, GenTL::TL_INFO_CMD command) {
        list.Add(String(name, tip).ReadOnly().Length(256).Default(UpToNul(GetProducerInfo(command).bytes)));
    };
    text("TLID", "Identifier of the producer", GenTL::TL_INFO_ID);
    text("TLVendorName", "Maker of the producer", GenTL::TL_INFO_VENDOR);
    text("TLModelName", "Model of the producer", GenTL::TL_INFO_MODEL);
    text("TLVersion", "Version of the producer", GenTL::TL_INFO_VERSION);
    text("TLFileName", "Name of its file", GenTL::TL_INFO_NAME);
    text("TLDisplayName", "Name for users", GenTL::TL_INFO_DISPLAYNAME);
    text("TLPath", "Path of its file", GenTL::TL_INFO_PATHNAME);
    list.Add(Enumeration("TLType", "Technology").ReadOnly().Expert().Entries({{"Mixed", 0, "Several"}}));
    const auto version = [&](const char* name, const char* tip, int number) {
        list.Add(Integer(name, tip).ReadOnly().Expert().Default(number));
    };
    version("GenTLVersionMajor", "Version of GenTL, major number", kGenTLMajor);
    version("GenTLVersionMinor", "Version of GenTL, minor number", kGenTLMinor);
    version("GenTLSFNCVersionMajor", "Version of the naming convention, major number", 1);
    version("GenTLSFNCVersionMinor", "Version of the naming convention, minor number", 2);

    list.Category("InterfaceEnumeration", "The interfaces");
    list.Add(Command("InterfaceUpdateList", "Looks for interfaces anew"));
    list.Add(Integer("InterfaceUpdateTimeout", "How long that may take")
                 .Expert()
                 .Range("1", "60000")
                 .Unit("ms")
                 .Default(1000));
    list.Add(Integer("InterfaceSelector", "Which interface the features below are about")
                 .Range("0", std::to_string(std::max<size_t>(maxAdapters, 1) - 1))
                 .NotStored());
    list.Add(String("InterfaceID", "Its identifier").ReadOnly().Volatile().SelectedBy({"InterfaceSelector"}));
    list.Add(String("InterfaceDisplayName", "Its name for users")
                 .ReadOnly()
                 .Volatile()
                 .SelectedBy({"InterfaceSelector"}));
    list.Add(Boolean("KxIsGigEVision", "Whether the interface has the addresses below")
                 .Custom()
                 .ReadOnly()
                 .Invisible()
                 .SelectedBy({"InterfaceSelector"}));
    struct CAddress
    {
        const char *name, *toolTip, *as;
        int64_t (*value)(const CAdapterFacts& adapter);
    };
    static constexpr CAddress kAddresses[] = {
        {"GevInterfaceMACAddress", "Address of the adapter", "MACAddress",
         [](const CAdapterFacts& adapter) { return static_cast<int64_t>(adapter.mac); }},
        {"GevInterfaceDefaultIPAddress", "IP address of the adapter", "IPV4Address",
         [](const CAdapterFacts& adapter) { return static_cast<int64_t>(adapter.ip.address); }},
        {"GevInterfaceDefaultSubnetMask", "Subnet mask of the adapter", "IPV4Address",
         [](const CAdapterFacts& adapter) { return static_cast<int64_t>(adapter.ip.mask); }},
        {"GevInterfaceDefaultGateway", "Gateway of the adapter", "IPV4Address",
         [](const CAdapterFacts& adapter) { return static_cast<int64_t>(adapter.ip.gateway); }}};
    for (const CAddress& address : kAddresses)
        list.Add(Integer(address.name, address.toolTip)
                     .Wide()
                     .ReadOnly()
                     .Expert()
                     .Volatile()
                     .As(address.as)
                     .SelectedBy({"InterfaceSelector"})
                     .AvailableIf("(KxIsGigEVision = 1)"));
    port.Publish(list, head);

    const auto at = [adapters = std::move(adapters)](size_t index) -> const CAdapterFacts& {
        const std::vector<const CAdapterFacts*> all = adapters();
        if (index >= all.size())
            Fail(GenTL::GC_ERR_NOT_AVAILABLE, "There is no interface with index %zu", index);
        return *all[index];
    };
    port.BindText("InterfaceID", [at](size_t i) { return at(i).id; });
    port.BindText("InterfaceDisplayName", [at](size_t i) { return at(i).displayName; });
    port.BindInteger("KxIsGigEVision",
                     [at](size_t i) { return at(i).technology == ETechnology::GEV ? 1 : 0; });
    for (const CAddress& address : kAddresses)
        port.BindInteger(address.name, [at, value = address.value](size_t i) { return value(at(i)); });
    port.BindCommand("InterfaceUpdateList", [update = std::move(update)](size_t) { update(); });
}

} // namespace KxProducer
