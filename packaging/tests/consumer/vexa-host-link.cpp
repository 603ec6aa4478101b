// Builds a tool on the installed host interface and checks that the host library behind it
// works: the tool's meta-object chains to IVexaTool's, and a rectangle path lands in the mask.
#include <IVexaTool.h>
#include <VexaSelection.h>
#include <VexaSelectionPath.h>

#include <QCoreApplication>

#include <cstdio>

namespace {

class ProbeTool : public IVexaTool
{
    Q_OBJECT
public:
    using IVexaTool::IVexaTool;
public slots:
    void active(VexaContext* c) override { context = c; }
    void disActive() override { context = nullptr; }
};

int failures = 0;

void check(bool ok, const char* what)
{
    if (!ok) {
        std::fprintf(stderr, "FAIL: %s\n", what);
        ++failures;
    }
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);

    ProbeTool tool;
    check(qobject_cast<IVexaTool*>(&tool) == &tool, "a derived tool casts to IVexaTool");
    check(tool.metaObject()->superClass() == &IVexaTool::staticMetaObject, "the tool's meta-object chains to IVexaTool");
    check(tool.metaObject()->indexOfSlot("active(VexaContext*)") >= 0, "active is a slot");

    VexaSelection selection(40, 20);
    auto* path = new VexaSelectionPath; // addPath adopts it
    path->setType(VexaSelectionPath::Rectangle);
    for (const QPointF& p : {QPointF(10, 5), QPointF(30, 5), QPointF(30, 15), QPointF(10, 15)})
        path->addPoint(p);
    selection.addPath(path, 0);
    const int stride = selection.maskStride();
    check(selection.hasSelection(), "the rectangle selects something");
    check(selection.mask()[10 * stride + 20] == 255, "inside the rectangle is selected");
    check(selection.mask()[2 * stride + 2] == 0, "outside the rectangle is not");

    if (failures == 0)
        std::printf("host interface works\n");
    return failures == 0 ? 0 : 1;
}

#include "vexa-host-link.moc"
