#include "VexaLayerBase.h"

VexaLayerBase::VexaLayerBase(QObject* parent)
    : QObject(parent)
{
}

VexaLayerBase::~VexaLayerBase() = default;

void VexaLayerBase::setPosition(const QPointF& position)
{
    if (position == m_position)
        return;
    m_position = position;
    emit changed();
}
