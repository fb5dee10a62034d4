// SPDX-License-Identifier: Apache-2.0
// Shows the features of a description file (.xml or .zip) in the node-map window. Memory stands for the
// camera, so that all of them can be looked at, and most be changed.
//
// nodemap FILE [SECONDS]
#include <GenApi/GenApi.h>
#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>
#include <KxApi_TL/KxApi_TL.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <map>
#include <string>

using namespace KxApi;

// Memory of the whole address space, 0 until it is written.
struct Memory final : GenApi::IPort
{
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void* pTo, int64_t nAddress, int64_t nLength) override
    {
        for (int64_t i = 0; i < nLength; ++i)
            static_cast<char*>(pTo)[i] = bytes[nAddress + i];
    }
    void Write(const void* pFrom, int64_t nAddress, int64_t nLength) override
    {
        for (int64_t i = 0; i < nLength; ++i)
            bytes[nAddress + i] = static_cast<const char*>(pFrom)[i];
    }
    std::map<int64_t, char> bytes;
};

int main(int argc, char** argv)
try {
    if (argc < 2)
        throw RUNTIME_EXCEPTION("usage: nodemap FILE [SECONDS]");
    const std::string strFile = argv[1];
    Memory memory; // before the map, which reads it until it is gone
    GenApi::CNodeMapRef map;
    const bool bZip = strFile.size() > 4 && strFile.substr(strFile.size() - 4) == ".zip";
    if (bZip)
        map._LoadXMLFromZIPFile(strFile.c_str());
    else
        map._LoadXMLFromFile(strFile.c_str());
    map._Connect(&memory);

    const CKxApiAutoInitTerm sdk;
    const CIKxWndPtrT<IKxNodeMapDisplayWnd> window(CreateIKxWnd(KxWindowType_NodeMapDisplay));
    window->RegisterINode(map._GetNode("Root"), ""); // all features, in their categories
    if (GenApi::INode* const pWidth = map._GetNode("Width"))
        window->RegisterINode(pWidth, "Favourites"); // single ones, in a group of the program's own
    window->SetVisibleFilter(true);
    window->SetPosition(100, 100, 500, 900);
    window->Show(nullptr, KxWindowMode_Modaless);
    window->SetTitle(map._GetModelName());

    const auto end =
        std::chrono::steady_clock::now() + std::chrono::seconds(argc > 2 ? std::atoi(argv[2]) : 86400);
    while (window->IsVisible() && std::chrono::steady_clock::now() < end)
        processEventGUI(false, 10);
    std::cout << memory.bytes.size() << " bytes of the camera were used\n";
} catch (const GenICam::GenericException& e) {
    std::cerr << e.GetDescription() << "\n";
    return 1;
}
