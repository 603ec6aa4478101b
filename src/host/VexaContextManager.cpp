#include "VexaContextManager.h"

#include "VexaContext.h"

VexaContextManager* VexaContextManager::getInstance()
{
    static VexaContextManager manager;
    return &manager;
}

VexaContext* VexaContextManager::getCurrentContext() const { return m_current; }

void VexaContextManager::setCurrentContext(VexaContext* context)
{
    if (m_current == context)
        return;
    m_current = context;
    emit currentContextChanged(context);
}
