// The bytes of an image file through the loading path of the editor and the command-line
// tools. A file is either refused with a reason or gives a usable picture; nothing it declares
// (sizes, counts, offsets) may make the reader allocate without bound or read out of bounds.
#include "VexaImageFile.h"

#include <QBuffer>
#include <QByteArray>
#include <QCoreApplication>
#include <QImageReader>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {
[[noreturn]] void fail(const char* what)
{
    std::fprintf(stderr, "fuzz-imageload: %s\n", what);
    std::abort();
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    // The image format plug-ins (JPEG, GIF) are found through the application object.
    static QCoreApplication app(*argc, *argv);
    // The decoders' complaints about broken files would drown the fuzzer's own output.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QString why;
    // A bound well inside libFuzzer's memory limit: a declared size near the machine's bound
    // would otherwise be a legitimate allocation that the fuzzer counts as a finding.
    const QImage image = VexaImageFile::read(&buffer, &why, qint64(256) << 20);
    if (image.isNull()) {
        if (why.isEmpty())
            fail("refused without a reason");
        return 0;
    }
    if (image.width() <= 0 || image.height() <= 0)
        fail("an image without pixels");
    // Qt's bound on what a decoder may allocate (in MiB) holds for what comes back.
    if (image.sizeInBytes() > qsizetype(QImageReader::allocationLimit()) * 1024 * 1024)
        fail("an image beyond the allocation bound");
    // Every pixel can be read, as the editor's composition and the quick select step read them.
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    if (argb.size() != image.size())
        fail("the picture changed its size on conversion");
    return 0;
}
