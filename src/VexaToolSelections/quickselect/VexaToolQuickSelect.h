#pragma once

#include "VexaToolSelectionBase.h"

#include <memory>

class QImage;
class VexaFilterContainer;
class VexaToolQuickSelectWidget;

// Quick select as the host sees it: activation shows the quick select window modally over
// the editor; "OK" there writes the matte into the selection, deletes what lies outside the
// object and deactivates the tool. Canvas gestures do nothing.
class VexaToolQuickSelect : public VexaToolSelectionBase
{
    Q_OBJECT
public:
    explicit VexaToolQuickSelect(QObject* parent = nullptr);
    ~VexaToolQuickSelect() override;

    void active(VexaContext* context) override;
    void disActive() override;
    QWidget* getWidget() override;

    // Makes the grey matte the selection (resampled to the canvas when its size differs),
    // deletes everything outside it and deactivates the tool. A null matte, or a one-pixel
    // canvas with a matte of another size, leaves the selection as it was.
    void apply(const QImage& alpha);

    VexaFilterContainer* getContainer() const { return container; }

private:
    VexaToolQuickSelectWidget* dialog = nullptr;
    VexaFilterContainer* container = nullptr;
    // The container holds the window as its child; the tool keeps both for its lifetime.
    std::unique_ptr<VexaFilterContainer> containerOwned;
};
