// SPDX-License-Identifier: Apache-2.0
// Drives an image window by its features: each setting of a window is a node of its node map too, so that
// settings can be listed, set from a file, or edited in a node-map window, as those of a camera.
#include "FirstCamera.h"

#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>

using namespace KxApi;

// Names and values of a category's features and those below it.
static void Print(GenApi::ICategory& category)
{
    GenApi::FeatureList_t features;
    category.GetFeatures(features);
    for (GenApi::IValue* const pFeature : features) {
        if (auto* const pBelow = dynamic_cast<GenApi::ICategory*>(pFeature))
            Print(*pBelow);
        else if (GenApi::IsReadable(pFeature))
            std::cout << pFeature->GetNode()->GetName() << "=" << pFeature->ToString() << "\n";
    }
}

int main(int argc, char** argv)
try {
    const CKxApiAutoInitTerm sdk;
    const CIKxWndPtrT<IKxWnd> window(CreateIKxWnd(KxWindowType_ImageDisplay));
    GenApi::INodeMap& map = *window->GetINodeMap();
    // Before it is shown or while it is; what is on the screen follows.
    const struct
    {
        const char* szFeature;
        const char* szValue;
    } settings[] = {
        {"ZoomMode", "FitToTheWindow"}, {"ColorMapType", "PseudoColor_BGR"}, {"VisibleMenu", "true"}};
    for (const auto& setting : settings)
        GenApi::CValuePtr(map.GetNode(setting.szFeature))->FromString(setting.szValue);
    Print(*GenApi::CCategoryPtr(map.GetNode("Root")));
    window->Show(nullptr, KxWindowMode_Modaless);

    // A second window in which the user changes the first.
    const CIKxWndPtrT<IKxNodeMapDisplayWnd> editor(CreateIKxWnd(KxWindowType_NodeMapDisplay));
    editor->RegisterINode(map.GetNode("Root"), "");
    editor->Show(nullptr, KxWindowMode_Modaless);

    auto& imageWindow = dynamic_cast<IKxImageDisplayWnd&>(*window);
    Samples::ForEachImage toWindow([&](IKxStreamImage& image) { imageWindow.RegisterIKxImage(&image); });
    Samples::FirstCamera camera; // made last, so that it ends first
    IKxStream& stream = camera.Stream();
    stream.StartAcquisition(&toWindow, Samples::ImagesOf(argc, argv));
    while (window->IsVisible() && stream.IsAcquiring())
        processEventGUI(false, 10);
    stream.StopAcquisition();
    editor->Close(); // it shows nodes of the other window
    std::cout << stream.GetStatistics().nDelivered << " images\n";
} catch (const GenICam::GenericException& e) {
    std::cerr << e.GetDescription() << "\n";
    return 1;
}
