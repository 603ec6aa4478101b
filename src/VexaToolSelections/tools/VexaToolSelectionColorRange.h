#pragma once

#include "IVexaTool.h"

#include <QCursor>
#include <QImage>
#include <QPointer>
#include <QTimer>

#include <memory>

class VexaFilterContainer;
class VexaToolSelectionColorRangeWidget;

// Selects by colour: every pixel of the document is graded by its distance from the
// foreground colour, picked on the canvas, within a tolerance. A small preview follows the
// colour and tolerance; OK makes the graded mask the selection. One per process.
class VexaToolSelectionColorRange : public IVexaTool
{
    Q_OBJECT
public:
    // The process-wide tool, built with `parent` on the first call.
    static VexaToolSelectionColorRange* getInstance(QObject* parent);
    ~VexaToolSelectionColorRange() override;

    void active(VexaContext* context) override;
    void disActive() override;
    void init() override;
    void release() override;

    void apply();
    void setTolerance(int t);
    int getTolerance() const { return tolerance; }
    void initImageThumb();
    int getPickMode() const { return pickMode; }
    const QImage& imageThumbnail() const { return imageThumb; }
    const QImage& selectionThumbnail() const { return selectionThumb; }
    VexaToolSelectionColorRangeWidget* getDialog() const { return dialog; }
    bool isPreviewUpToDate() const { return thumbUpToDate; }
    // Within the interval after a recomputation, when further requests wait for a canvas tick.
    bool isThrottled() const { return busy; }

signals:
    void pickStart();
    void pickStop();

public slots:
    void calcSelectionThumb();
    void onFgColorChanged();
    void onBusyTimeout();
    void onCanvasTimeout();

private:
    explicit VexaToolSelectionColorRange(QObject* parent);
    QColor foreground() const;

    QCursor cursor;
    VexaToolSelectionColorRangeWidget* dialog = nullptr;
    VexaFilterContainer* container = nullptr;
    int pickMode = 0;
    int thumbSize = 300;
    QImage imageThumb;
    QImage selectionThumb;
    int tolerance = 40;
    QTimer busyTimer;
    bool busy = false;
    bool thumbUpToDate = true;
    std::unique_ptr<QImage> renderedImage;
    QPointer<QWidget> m_containerOwned;
};
