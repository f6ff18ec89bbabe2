// Picture files: BMP, GIF and JPG, known by their content.
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QLoggingCategory>
#include <QPainter>
#include <climits>
#include <cstring>

#include "platform/picture.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_pictures.h"

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

constexpr int64_t LargestImage = 400ll << 20;  // bytes that one decoded picture may take

// By its bytes, and never waiting: a FIFO under a picture's name must not hold the program up.
bool OpenRegular(QFile& file, const std::string& path) {
#ifndef _WIN32
    const int handle = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0) return false;
    struct stat facts {};
    if (::fstat(handle, &facts) == 0 && S_ISREG(facts.st_mode) &&
        file.open(handle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return true;
    ::close(handle);
    return false;
#else
    file.setFileName(QString::fromUtf8(path.data(), qsizetype(path.size())));
    return file.open(QIODevice::ReadOnly);
#endif
}

// The three formats by their first bytes; what is behind another name counts for nothing.
const char* FormatOf(QFile& file) {
    const QByteArray begin = file.peek(6);
    if (begin.startsWith("BM")) return "bmp";
    if (begin == "GIF87a" || begin == "GIF89a") return "gif";
    if (begin.startsWith("\xFF\xD8\xFF")) return "jpeg";
    return nullptr;
}

// One open picture file, its header read.
class PictureFile {
public:
    explicit PictureFile(const std::string& path) {
        static const bool once = [] {
            QLoggingCategory::setFilterRules("qt.gui.imageio*=false");
            QImageReader::setAllocationLimit(1024);
            return true;
        }();
        (void)once;
        if (!OpenRegular(file_, path)) return;
        format_ = FormatOf(file_);
        if (!format_) return;
        reader_.setAutoDetectImageFormat(false);
        reader_.setFormat(format_);
        reader_.setDevice(&file_);
        reader_.setAutoTransform(true);
        const QSize size = reader_.size();
        // Rows from the top down count negative; both sides do if there is no size.
        if (size.width() > 0 && size.height() > INT_MIN) stored_ = {size.width(), std::abs(size.height())};
        turned_ = reader_.transformation().testFlag(QImageIOHandler::TransformationRotate90);
    }

    bool Valid() const { return format_ && stored_.width > 0 && stored_.height > 0; }
    Size Upright() const { return Turned(stored_); }

    // The picture at a resolution that suffices for `atLeast`; a null image if that is too much or
    // the file is no picture.
    QImage Read(Size atLeast) {
        const bool scalable = std::strcmp(format_, "jpeg") == 0;
        const int eighths = scalable ? EighthsFor(Turned(atLeast)) : 8;
        if (eighths == 0 || (eighths == 8 && !Affordable(stored_))) return {};
        if (eighths < 8) {
            const Size part = Part(eighths);
            reader_.setScaledSize({part.width, part.height});
        }
        return reader_.read();
    }

private:
    Size Turned(Size size) const { return turned_ ? Size{size.height, size.width} : size; }

    Size Part(int eighths) const {
        const auto part = [eighths](int whole) { return int((int64_t(whole) * eighths + 7) / 8); };
        return {part(stored_.width), part(stored_.height)};
    }

    static bool Affordable(Size size) { return int64_t(size.width) * size.height * 4 <= LargestImage; }

    // A JPEG comes at any eighth of its size for a fraction of the work. The smallest that suffices, or
    // the largest that is affordable where all of it is too much; 0 if none is.
    int EighthsFor(Size atLeast) const {
        const bool all = atLeast.width <= 0 || atLeast.height <= 0;
        int best = 0;
        for (int eighths = 1; eighths <= 8; ++eighths) {
            const Size part = Part(eighths);
            // The decoder may go one step further than asked and shrink the result.
            if (!Affordable(Part(std::min(eighths + 1, 8)))) break;
            best = eighths;
            if (!all && part.width >= atLeast.width && part.height >= atLeast.height) break;
        }
        return best;
    }

    QFile file_;
    QImageReader reader_;
    const char* format_ = nullptr;
    Size stored_;
    bool turned_ = false;
};

// Opaque pixels in the game's order, what is transparent over white.
QImage OverWhite(const QImage& image) {
    if (!image.hasAlphaChannel()) return image.convertToFormat(QImage::Format_RGB32);
    QImage flat(image.size(), QImage::Format_RGB32);
    flat.fill(Qt::white);
    QPainter painter(&flat);
    painter.drawImage(0, 0, image);
    return flat;
}

Surface ToSurface(const QImage& image) {
    Surface surface(image.width(), image.height());
    Pixel* out = surface.DrawAll();
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const Pixel*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) *out++ = row[x] | OpaqueBits;
    }
    return surface;
}

}  // namespace

std::optional<Size> QtDesktop::PictureSize(const std::string& path) { return ReadPictureSize(path); }

std::optional<Picture> QtDesktop::DecodePicture(const std::string& path, Size atLeast) {
    return ReadPicture(path, atLeast);
}

std::optional<Size> ReadPictureSize(const std::string& path) {
    const PictureFile file(path);
    if (!file.Valid()) return std::nullopt;
    return file.Upright();
}

std::optional<Picture> ReadPicture(const std::string& path, Size atLeast) {
    PictureFile file(path);
    if (!file.Valid()) return std::nullopt;
    const QImage image = file.Read(atLeast);
    if (image.isNull()) return std::nullopt;
    const QImage flat = OverWhite(image);
    if (flat.isNull()) return std::nullopt;
    Picture picture;
    picture.Natural = file.Upright();
    picture.Image = ToSurface(flat);
    return picture;
}
