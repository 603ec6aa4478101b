#pragma once

// Shared by the quick select window and tool suites: a document with a canvas, waiting for
// worker steps, and a watcher that answers the window's message boxes.
#include "Thread.h"
#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaContextManager.h"
#include "VexaToolQuickSelectWidget.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QStringList>
#include <QTimer>
#include <QtTest>

#include <memory>

struct QuickSelectDocument {
    explicit QuickSelectDocument(const QImage& image) : doc(VexaContext::fromImage(image)), canvas(std::make_unique<VexaCanvas>())
    {
        canvas->setContext(doc.get());
        VexaContextManager::getInstance()->setCurrentContext(doc.get());
    }
    ~QuickSelectDocument() { VexaContextManager::getInstance()->setCurrentContext(nullptr); }
    std::unique_ptr<VexaContext> doc;
    std::unique_ptr<VexaCanvas> canvas;
};

// Spins the event loop until `done` holds or `ms` pass.
template <class Pred>
inline bool spinUntil(Pred done, int ms = 120000)
{
    QElapsedTimer t;
    t.start();
    while (!done() && t.elapsed() < ms)
        QTest::qWait(5);
    return done();
}

// The end of a step is seen by the window once the worker's queued reports have arrived.
inline bool waitForStep(const VexaToolQuickSelectWidget* w) { return spinUntil([w] { return !w->isStepRunning(); }); }

// Closes every message box that opens and remembers its text and title.
class MessageBoxAnswerer : public QObject
{
public:
    MessageBoxAnswerer()
    {
        timer.setInterval(10);
        QObject::connect(&timer, &QTimer::timeout, [this] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                texts << box->text();
                titles << box->windowTitle();
                box->accept();
            }
        });
        timer.start();
    }
    QStringList texts, titles;
    QTimer timer;
};

// An object in the middle of a textured background: a light disc on dark noise.
inline QImage discPicture(int w, int h)
{
    QImage img(w, h, QImage::Format_ARGB32);
    quint32 seed = 12345;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            seed = seed * 1664525u + 1013904223u;
            const int n = int(seed >> 28);
            const double dx = x - w / 2.0, dy = y - h / 2.0;
            const bool inside = dx * dx + dy * dy < (w / 4.0) * (w / 4.0);
            img.setPixel(x, y, inside ? qRgb(220 - n, 200 - n, 60 + n) : qRgb(30 + n, 60 + n, 40 + n));
        }
    return img;
}
