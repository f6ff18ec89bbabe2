// Picture files: BMP, GIF and JPG, known by their content.
#include "platform/qt/pictures/picture_file.h"

#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QLoggingCategory>
#include <algorithm>
#include <climits>
#include <cstring>

#include "platform/drawing/picture.h"
#include "platform/qt/pictures/bmp_bands.h"
#include "platform/system/files.h"

namespace {

constexpr int64_t LargestImage = 400ll << 20;         // bytes that one decoded picture may take
constexpr int LongestSide = 65'535;                   // what JPG and GIF can have; beyond it only a trap
constexpr int64_t LargestCoefficients = 320ll << 20;  // bytes that a JPEG may take that is not decoded row by row

// The three formats by their first bytes; what is behind another name counts for nothing.
const char* FormatOf(QIODevice& file) {
    const QByteArray begin = file.peek(6);
    if (begin.startsWith("BM")) return "bmp";
    if (begin == "GIF87a" || begin == "GIF89a") return "gif";
    if (begin.startsWith("\xFF\xD8\xFF")) return "jpeg";
    return nullptr;
}

int Big16(const QByteArray& bytes, qsizetype at) { return uint8_t(bytes[at]) << 8 | uint8_t(bytes[at + 1]); }

// Bytes of the coefficients that the decoder of a JPEG keeps in memory, whatever size it is asked for: all of them
// where the picture comes in several passes (progressive, or one colour after the other), else none. Reads on from
// the file's start up to the first pass.
int64_t CoefficientBytes(QIODevice& file) {
    int64_t bytes = 0;
    int colours = 0;
    bool progressive = false;
    for (qint64 at = 2; file.seek(at);) {
        const QByteArray head = file.read(4);
        if (head.size() < 4 || uint8_t(head[0]) != 0xFF) return 0;
        const int marker = uint8_t(head[1]);
        if (marker == 0xFF) {  // fill before a marker
            ++at;
            continue;
        }
        const QByteArray body = file.read(std::max(0, Big16(head, 2) - 2));
        at += 2 + Big16(head, 2);
        const bool frame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame && body.size() >= 6) {
            progressive = marker == 0xC2 || marker == 0xC6 || marker == 0xCA || marker == 0xCE;
            colours = uint8_t(body[5]);
            if (body.size() < 6 + 3 * colours) return 0;
            int across = 1, down = 1;
            for (int i = 0; i < colours; ++i) {
                across = std::max(across, uint8_t(body[7 + 3 * i]) >> 4);
                down = std::max(down, uint8_t(body[7 + 3 * i]) & 15);
            }
            const int64_t unitsAcross = Big16(body, 3) / (8 * across) + 1, unitsDown = Big16(body, 1) / (8 * down) + 1;
            bytes = 0;
            for (int i = 0; i < colours; ++i)
                bytes +=
                    unitsAcross * unitsDown * (uint8_t(body[7 + 3 * i]) >> 4) * (uint8_t(body[7 + 3 * i]) & 15) * 128;
        } else if (marker == 0xDA) {
            return progressive || (!body.isEmpty() && uint8_t(body[0]) < colours) ? bytes : 0;
        }
    }
    return 0;
}

// One open picture file, its header read.
class PictureFile {
public:
    PictureFile(const std::string& path, Pace& pace) : device_(file_, pace), pace_(pace) {
        static const bool once = [] {
            QLoggingCategory::setFilterRules("qt.gui.imageio*=false");
            QImageReader::setAllocationLimit(1024);
            return true;
        }();
        (void)once;
        const int file = OpenRegular(path);
        if (file < 0 || !file_.open(file, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) return;
        format_ = FormatOf(device_);
        if (!format_) return;
        if (Jpeg() && CoefficientBytes(device_) > LargestCoefficients) {
            format_ = nullptr;
            return;
        }
        device_.seek(0);
        reader_.setAutoDetectImageFormat(false);
        reader_.setFormat(format_);
        reader_.setDevice(&device_);
        reader_.setAutoTransform(true);
        const QSize size = reader_.size();
        // Rows from the top down count negative; both sides do if there is no size.
        if (size.width() > 0 && size.height() > INT_MIN) stored_ = {size.width(), std::abs(size.height())};
        turned_ = reader_.transformation().testFlag(QImageIOHandler::TransformationRotate90);
    }

    bool Valid() const {
        const auto [shorter, longer] = std::minmax(stored_.width, stored_.height);
        return format_ && shorter > 0 && longer <= LongestSide;
    }
    Size Upright() const { return Turned(stored_); }

    // The picture at a resolution that suffices for `atLeast`. Nothing if that is too much, the file is no picture, or
    // nobody wants it any more.
    std::optional<Surface> Read(Size atLeast, int64_t reducedFrom) {
        device_.BeginPauses();
        if (const int side = Reduction(stored_, atLeast, reducedFrom); Bmp() && side > 1 && Affordable(stored_)) {
            const qint64 place = device_.pos();  // where the reader left off
            if (std::optional<BmpBands> bands = BmpBands::In(device_)) {
                const auto rows = [&bands](int top, int count) { return bands->Rows(top, count); };
                return Reduced(stored_, side, rows, pace_);
            }
            device_.seek(place);
        }
        const QImage image = Decoded(atLeast);
        if (image.isNull()) return std::nullopt;
        const Size size{image.width(), image.height()};
        const auto rows = [&image](int top, int count) { return image.copy(0, top, image.width(), count); };
        return Reduced(size, Reduction(size, atLeast, reducedFrom), rows, pace_);
    }

private:
    bool Jpeg() const { return std::strcmp(format_, "jpeg") == 0; }
    bool Bmp() const { return std::strcmp(format_, "bmp") == 0; }

    QImage Decoded(Size atLeast) {
        const int eighths = Jpeg() ? EighthsFor(Turned(atLeast)) : 8;
        if (eighths == 0 || (eighths == 8 && !Affordable(stored_))) return {};
        if (eighths < 8) {
            const Size part = Part(eighths);
            reader_.setScaledSize({part.width, part.height});
        }
        return reader_.read();
    }

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
    PacedFile device_;
    Pace& pace_;
    QImageReader reader_;
    const char* format_ = nullptr;
    Size stored_;
    bool turned_ = false;
};

}  // namespace

std::optional<Size> ReadPictureSize(const std::string& path) {
    Pace none;
    const PictureFile file(path, none);
    if (!file.Valid()) return std::nullopt;
    return file.Upright();
}

std::optional<Picture> ReadPicture(const std::string& path, Size atLeast) {
    Pace none;
    return ReadPicture(path, atLeast, none);
}

std::optional<Picture> ReadPicture(const std::string& path, Size atLeast, Pace& pace, int64_t reducedFrom) {
    PictureFile file(path, pace);
    if (!file.Valid()) return std::nullopt;
    std::optional<Surface> image = file.Read(atLeast, reducedFrom);
    if (!image) return std::nullopt;
    return Picture{file.Upright(), std::move(*image)};
}
