// SPDX-License-Identifier: Apache-2.0
// Docks that plot something of the shown image while it runs.
#pragma once

#include "ViewerDock.h"

#include <KxApi_GUI/IKxDrawingMeasurements.h>
#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_IP/IKxGraphDataBufferList.h>
#include <KxApi_TL/CKxAutoPtr.h>

#include <QTimer>
#include <memory>

class QLabel;
class QTableWidget;

namespace KxApi
{
struct IKxImage;
}

/// A graph window with the figures of its data below it. It looks for a new image at a pace that leaves most
/// of the processor to others, and not at all while it is hidden. GUI thread.
class GraphDock : public ViewerDock
{
    Q_OBJECT

public:
    GraphDock(const QString& strTitle, const char* szName, KxApi::_EKxGraphNomalization_t eNormalization,
              const char* szScaleMode, QWidget* pParent);
    ~GraphDock() override;

    void Follow(CameraView& view) override;
    void Unfollow() override;

protected:
    /// Appends what is to be plotted of an image. Raises what the image objects to.
    /// @param pSelected the drawn object that is selected, null when there is none
    /// @return what it is, for the user
    virtual QString Append(const KxApi::IKxImage& image, const KxApi::CKxDrawingMeasurement* pSelected,
                           KxApi::IKxGraphDataBufferListResizable& list) = 0;

    void showEvent(QShowEvent* pEvent) override;
    void hideEvent(QHideEvent* pEvent) override;

private:
    /// What the plot was made of.
    struct Source
    {
        const void* pImage = nullptr;
        uint64_t nImages = 0;
        uint64_t nDrawing = 0;
        bool operator==(const Source& other) const
        {
            return pImage == other.pImage && nImages == other.nImages && nDrawing == other.nDrawing;
        }
    };

    void Look();
    void Plot();
    void MakeWindow();
    void ShowStatistics();
    void Say(const QString& strText);

    const KxApi::_EKxGraphNomalization_t m_eNormalization;
    const char* const m_szScaleMode;
    CameraView* m_pView = nullptr;
    Source m_plotted;
    QTimer m_timer;
    QLabel* m_pSource;
    QTableWidget* m_pStatistics;
    KxApi::CKxAutoPtr<KxApi::IKxWndReleasable, KxApi::IKxGraphDisplayWnd> m_window; // from the first show on
    KxApi::CKxAutoPtr<KxApi::IKxGraphDataBufferListResizable> m_list;
};

/// The histogram of the image, or of a selected rectangle.
class HistogramDock final : public GraphDock
{
    Q_OBJECT

public:
    explicit HistogramDock(QWidget* pParent);

private:
    QString Append(const KxApi::IKxImage& image, const KxApi::CKxDrawingMeasurement* pSelected,
                   KxApi::IKxGraphDataBufferListResizable& list) override;
};

/// The values along a selected line, or along the middle of the image.
class ProfileDock final : public GraphDock
{
    Q_OBJECT

public:
    explicit ProfileDock(QWidget* pParent);
    bool IsShownAtFirst() const override { return false; }

private:
    QString Append(const KxApi::IKxImage& image, const KxApi::CKxDrawingMeasurement* pSelected,
                   KxApi::IKxGraphDataBufferListResizable& list) override;
};
