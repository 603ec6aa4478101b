#pragma once

// A document, a canvas at a chosen scale and a controllable clock and modifier state, for
// driving tools through the canvas signals at widget coordinates.
#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaContextManager.h"
#include "VexaSelection.h"
#include "VexaToolEnvironment.h"

#include <QImage>
#include <QRect>

#include <memory>

class VexaToolFixture
{
public:
    VexaToolFixture(const QSize& size, float scale)
    {
        QImage img(size, QImage::Format_ARGB32);
        img.fill(qRgb(90, 120, 150));
        doc = VexaContext::fromImage(img);
        canvas = std::make_unique<VexaCanvas>();
        canvas->resize(600, 400);
        canvas->setContext(doc.get());
        canvas->setView(scale, QPointF(0, 0));
        VexaContextManager::getInstance()->setCurrentContext(doc.get());
        VexaToolEnvironment::setClock([this] { return now; });
        VexaToolEnvironment::setModifierSource([this] { return modifiers; });
    }
    ~VexaToolFixture()
    {
        VexaToolEnvironment::setClock({});
        VexaToolEnvironment::setModifierSource({});
        VexaContextManager::getInstance()->setCurrentContext(nullptr);
    }

    VexaSelection* selection() const { return doc->getSelection(); }
    int at(int x, int y) const { return selection()->mask()[size_t(y) * size_t(selection()->maskStride()) + size_t(x)]; }
    QRect bounds() const { return selection()->boundingRect(); }
    void selectRect(const QRect& r)
    {
        const size_t stride = size_t(selection()->maskStride());
        std::vector<unsigned char> mask(stride * size_t(selection()->height()), 0);
        for (int y = r.top(); y <= r.bottom(); ++y)
            std::fill_n(mask.begin() + ptrdiff_t(size_t(y) * stride + size_t(r.left())), r.width(), 255);
        selection()->copyMask(mask.data());
    }

    void press(int x, int y) { emit canvas->mousePress(x, y); }
    void move(int x, int y) { emit canvas->mouseMove(x, y); }
    void release(int x, int y) { emit canvas->mouseRelease(x, y); }
    void doubleClick(int x, int y) { emit canvas->mouseDoubleClick(x, y); }
    void tick() { emit canvas->timeOut(); }
    void drag(QPoint a, QPoint b)
    {
        move(a.x(), a.y());
        press(a.x(), a.y());
        move((a.x() + b.x()) / 2, (a.y() + b.y()) / 2);
        move(b.x(), b.y());
        release(b.x(), b.y());
    }
    void click(int x, int y) { move(x, y); press(x, y); release(x, y); }

    std::unique_ptr<VexaContext> doc;
    std::unique_ptr<VexaCanvas> canvas;
    qint64 now = 1000000;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
};

// The fixture with a tool of type T, active on its document (and gone before it).
template <class T>
struct ToolFixture : VexaToolFixture {
    ToolFixture(const QSize& size, float scale) : VexaToolFixture(size, scale) { tool.active(doc.get()); }
    T tool;
};
