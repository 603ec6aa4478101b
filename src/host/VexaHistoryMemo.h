#pragma once

#include <QString>

// One undoable step of a document. The history owns the memos pushed into it.
class VexaHistoryMemo
{
public:
    virtual ~VexaHistoryMemo();
    virtual void undo() = 0;
    virtual void redo() = 0;
    virtual QString text() const = 0;
};
