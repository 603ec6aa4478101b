#pragma once

#include <QObject>
#include <QPointer>
#include <QSize>

#include <memory>

class IVexaTool;
class QImage;
class VexaCanvas;
class VexaHistory;
class VexaHistoryMemo;
class VexaLayerManager;
class VexaSelection;

// One open document: canvas size, layers, selection and history, the canvas that shows it
// and the tool currently working on it.
class VexaContext : public QObject
{
    Q_OBJECT
public:
    // A document of at least 1 x 1 pixels; an empty size is a programming error, and a size
    // the selection cannot address (VexaSelection::canAddress) gives an empty document.
    explicit VexaContext(const QSize& canvasSize, QObject* parent = nullptr);
    ~VexaContext() override;

    // A document with `image` as its only layer, or null (and a reason) for a null or empty
    // image or one too large for a selection mask. An image handed over with std::move becomes
    // the layer's pixels, converted in place where its format allows (no second full-size copy).
    static std::unique_ptr<VexaContext> fromImage(QImage image, QString* error = nullptr);

    // While true the pointing tools ignore presses and releases.
    bool toolInputBlocked = false;

    virtual VexaCanvas* getCanvas() const;
    void setCanvas(VexaCanvas* canvas);
    virtual VexaSelection* getSelection() const { return m_selection; }
    virtual VexaLayerManager* getLayerManager() const { return m_layers; }
    virtual VexaHistory* getHistory() const { return m_history; }
    virtual bool hasSelection() const;
    QSize canvasSize() const { return m_size; }

    // A memo left pending for the next tool to commit. The context keeps it (and deletes it if
    // never taken) until whoever pushes it into the history clears it with setLastMemo(nullptr).
    virtual VexaHistoryMemo* getLastMemo() const { return m_lastMemo; }
    virtual void setLastMemo(VexaHistoryMemo* memo) { m_lastMemo = memo; }

    virtual void setCurrentTool(IVexaTool* tool);
    IVexaTool* currentTool() const;

    // Clears the selected pixels of the active layer, in proportion to the selection's strength.
    // Returns false when there is nothing to clear, or, with the reason in `error`, when the
    // layer's copy for the change does not fit in memory (the layer is then unchanged).
    // On a camera-sized layer the pixels are written on a pool thread while this thread's event
    // loop runs (input held back).
    bool deleteSelectedPixels(QString* error = nullptr);
    // True while a pool thread writes a layer's pixels: readers on this thread (the canvas)
    // keep what they have until the change is announced.
    bool isBeingWritten() const;
    // The composed document, 32-bit ARGB.
    QImage composed() const;

signals:
    void currentToolChanged(IVexaTool* tool);

private:
    // "Not enough memory for a W x H image (N MB)." with the size of its 32-bit copy.
    static QString notEnoughMemory(const QSize& size);

    QSize m_size;
    VexaHistory* m_history;
    VexaLayerManager* m_layers;
    VexaSelection* m_selection;
    QPointer<VexaCanvas> m_canvas;
    QPointer<IVexaTool> m_tool;
    VexaHistoryMemo* m_lastMemo = nullptr;
};
