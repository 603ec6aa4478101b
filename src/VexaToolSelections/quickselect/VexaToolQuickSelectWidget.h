#pragma once

#include "VexaSegmentation.h"

#include <QMainWindow>
#include <QPoint>
#include <QRect>
#include <QString>

#include <memory>

class QCheckBox;
class QGroupBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QScrollArea;
class QSlider;
class Thread;
class ThreadReporter;
class VexaContext;
class VexaToolQuickSelect;
class VexaToolQuickSelectImageBox;

// The quick select window: holds the segmentation, shows it in the zoomable mark view, paints
// the user's strokes into the marks, starts the worker's steps and shows their progress, and
// hands the finished matte to the tool.
//
// While a step runs the worker owns the segmentation's images: the window neither paints
// marks nor composes its view from them until the step has ended, and the controls that
// would start, reset or apply anything are disabled.
class VexaToolQuickSelectWidget : public QMainWindow
{
    Q_OBJECT
    // The marks as painted so far, for hosts and scripts that see the window only through Qt.
    Q_PROPERTY(QImage markImage READ markImageCopy)
public:
    explicit VexaToolQuickSelectWidget(QMainWindow* parent = nullptr);
    ~VexaToolQuickSelectWidget() override;

    void setQuickSelectTool(VexaToolQuickSelect* tool) { quickSelectTool = tool; }
    // Stops a running step (it polls a cancel flag) and waits for the worker to end.
    void stopThread();
    // Drops the images, the view's buffer and the flow graph.
    void releaseData();

    const VexaSegmentation& segmentation() const { return seg; }
    VexaToolQuickSelectImageBox* getImageBox() const { return imageBox; }
    Thread* getThread() const { return thread.get(); }
    // True from the start of a step until the window has seen it end.
    bool isStepRunning() const { return stepRunning; }
    // A deep copy: never a second reference to an image a step may be writing. While a step
    // runs it waits for the step's end, so it never reads pixels the step is writing (the mark
    // step writes its boundary band into the marks).
    QImage markImageCopy() const;
    // Shows `text` and `percent` in the status bar at once, for work the GUI thread does itself.
    void showProgress(const QString& text, int percent) { on_progress(text, percent); }

public slots:
    void load(VexaContext* context);
    void save();
    void mark();
    void matte();
    void reset();
    void apply();
    void line(QPoint p1, QPoint p2, bool inverse);
    void line(QPoint p1, QPoint p2);
    void setPainting(bool enabled);
    void setMessage(QString text);

protected slots:
    void updateImageBox(QRect rect);
    void updateRadius();
    void updateLambda();
    void on_closeButton_clicked();
    void on_viewImageButton_clicked();
    void on_viewAlphaButton_clicked();
    void on_viewMatteButton_clicked();
    void on_viewNodesButton_clicked();
    void on_showMarkBox_clicked();
    void on_markObjButton_clicked();
    void on_markBkgButton_clicked();
    void on_markClrButton_clicked();
    void on_markBndButton_clicked();
    void on_progress(QString text, int percent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    friend class Thread;
    friend class ThreadReporter;

    VexaSegmentation& segmentationForStep() { return seg; }
    // Starts one worker step with `code`, unless one is running (the code is still stored).
    void startStep(int code);
    // The worker's run with `serial` has returned; stale reports of a cancelled run are ignored.
    void stepEnded(int serial);
    // The worker's request to check a view button: 0 image, 1 matte, 2 alpha.
    void checkViewButton(int which);
    // The worker's request to show its result; it has written its last pixel by then.
    void showStepResult(const QRect& area);
    void compose(const QRect& rect);
    // The marks of an image rectangle as the view shows them: the computed band in its own colour.
    QImage marksToShow(const QRect& rect) const;
    // Reloads the view for the view button that is checked and recomposes all of it.
    void refreshView();
    void chooseMarkButton(QPushButton* chosen);
    // Checks `chosen` alone among the mark buttons and gives it its colour.
    void choosePen(QPushButton* chosen);
    // Keyboard zoom: by `step` indices about the middle of what the scroll area shows.
    void zoomKey(int step);
    void setStepControlsEnabled(bool enabled);

    QString title;
    VexaToolQuickSelect* quickSelectTool = nullptr;
    VexaSegmentation seg;

    QScrollArea* scrollArea;
    VexaToolQuickSelectImageBox* imageBox;
    QGroupBox* markGroup;
    QPushButton* markObjButton;
    QPushButton* markBkgButton;
    QPushButton* previewButton;
    QPushButton* markBndButton;
    QPushButton* markClrButton;
    QPushButton* matteButton;
    QCheckBox* refineEdgesBox;
    QGroupBox* penGroup;
    QLabel* radiusLabel;
    QSlider* radiusSlider;
    QLabel* lambdaLabel;
    QSlider* lambdaSlider;
    QGroupBox* viewGroup;
    QCheckBox* showMarkBox;
    QRadioButton* viewImageButton;
    QRadioButton* viewMatteButton;
    QRadioButton* viewAlphaButton;
    std::unique_ptr<QRadioButton> viewNodesButton; // never shown, so no parent owns it
    QPushButton* resetButton;
    QPushButton* applyButton;
    QPushButton* closeButton;
    QLabel* progressLabel;
    QProgressBar* progressBar;
    QLabel* messageLabel;

    std::unique_ptr<Thread> thread;
    bool stepRunning = false;
    int stepSerial = 0;
    // A view change asked for while a step ran; done when it ends.
    bool refreshAfterStep = false;
    bool fittedOnce = false;
    // The highest progress the running step reported.
    int stepPeak = 0;
    // The running step sent a hint instead of a result.
    bool stepRefused = false;
    QPushButton* focusBeforeStep = nullptr;
};
