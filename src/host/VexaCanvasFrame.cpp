#include "VexaCanvasFrame.h"

#include "VexaCanvas.h"
#include "VexaContext.h"

#include <QEvent>
#include <QGridLayout>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace {
// A bar over `photo` widget pixels of which `view` show, scrolled by `offset` (the view's left
// or top edge measured from the photo's); hidden while the whole photo fits. A photo panned
// past its edge widens the range, so the bar never snaps it back.
void fitBar(QScrollBar* bar, double photo, int view, double offset)
{
    const bool needed = photo > view + 0.5;
    bar->setVisible(needed);
    if (!needed)
        return;
    const int value = int(std::lround(offset));
    bar->setRange(std::min(0, value), std::max(int(std::ceil(photo)) - view, value));
    bar->setPageStep(view);
    bar->setSingleStep(std::max(1, view / 20));
    bar->setValue(value);
}
} // namespace

VexaCanvasFrame::VexaCanvasFrame(VexaCanvas* canvas, QWidget* parent)
    : QWidget(parent)
    , m_canvas(canvas)
    , m_horizontal(new QScrollBar(Qt::Horizontal, this))
    , m_vertical(new QScrollBar(Qt::Vertical, this))
{
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->addWidget(canvas, 0, 0);
    grid->addWidget(m_vertical, 0, 1);
    grid->addWidget(m_horizontal, 1, 0);
    m_horizontal->hide();
    m_vertical->hide();
    // The keyboard stays with the canvas, whose tool and Space-pan want it.
    m_horizontal->setFocusPolicy(Qt::NoFocus);
    m_vertical->setFocusPolicy(Qt::NoFocus);
    canvas->installEventFilter(this);
    connect(canvas, &VexaCanvas::viewChanged, this, &VexaCanvasFrame::syncBars);
    connect(m_horizontal, &QScrollBar::valueChanged, this, &VexaCanvasFrame::barMoved);
    connect(m_vertical, &QScrollBar::valueChanged, this, &VexaCanvasFrame::barMoved);
}

bool VexaCanvasFrame::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_canvas && event->type() == QEvent::Resize)
        syncBars();
    return QWidget::eventFilter(watched, event);
}

void VexaCanvasFrame::syncBars()
{
    if (m_syncing) {
        m_resync = true;
        return;
    }
    m_syncing = true;
    // Showing or hiding a bar resizes the canvas at once, which may call for the other bar;
    // a bar shown only makes the view smaller, so this settles within a few rounds.
    for (int round = 0; round < 4; ++round) {
        m_resync = false;
        const double scale = m_canvas->getScale();
        const QPointF origin = m_canvas->viewOrigin();
        fitBar(m_horizontal, m_canvas->getCanvasWidth() / scale, m_canvas->width(), -origin.x());
        fitBar(m_vertical, m_canvas->getCanvasHeight() / scale, m_canvas->height(), -origin.y());
        if (!m_resync)
            break;
    }
    m_syncing = false;
}

void VexaCanvasFrame::barMoved()
{
    if (m_syncing)
        return;
    QPointF origin = m_canvas->viewOrigin();
    if (m_horizontal->isVisibleTo(this))
        origin.setX(-m_horizontal->value());
    if (m_vertical->isVisibleTo(this))
        origin.setY(-m_vertical->value());
    m_syncing = true; // the bars already show where the view goes
    m_canvas->setView(m_canvas->getScale(), origin);
    m_syncing = false;
}
