#include "VexaColorPicker.h"

VexaColorPicker::VexaColorPicker(QObject* parent)
    : QObject(parent)
{
}

VexaColorPicker::~VexaColorPicker() = default;

void VexaColorPicker::onColorRangeToolPickStarted()
{
    if (m_picking)
        return;
    m_picking = true;
    emit pickingChanged(true);
}

void VexaColorPicker::onColorRangeToolPickStoped()
{
    if (!m_picking)
        return;
    m_picking = false;
    emit pickingChanged(false);
}
