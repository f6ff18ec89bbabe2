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
#include "platform/qt/pictures/jpeg_head.h"
#include "platform/qt/pictures/stoppable_file.h"
#include "platform/system/files.h"

namespace {

constexpr int64_t LargestPicture = 105'000'000;       // pixels
constexpr int64_t LargestGif = 32'000'000;            // pixels
constexpr int64_t LargestImage = 256ll << 20;         // bytes that one decoded picture may take
constexpr int LongestSide = 65'535;                   // what JPG and GIF can have; beyond it only a trap
constexpr int MostPasses = 100;                       // of a JPEG; usual are ten
constexpr int64_t LargestCoefficients = 300ll << 20;  // bytes that a JPEG may take that is not decoded row by row

// The three formats by their first bytes; what is behind another name counts for nothing.
const char* FormatOf(QIODevice& file) {
    const QByteArray begin = file.peek(6);
    if (begin.startsWith("BM")) return "bmp";
    if (begin == "GIF87a" || begin == "GIF89a") return "gif";
    if (begin.startsWith("\xFF\xD8\xFF")) return "jpeg";
    return nullptr;
}

// A GIF is decoded whole, and a second time where its first frame asks to be taken back.
bool IsBearableGif(QIODevice& file) {
    const QByteArray begin = file.peek(10);
    const auto side = [&begin](qsizetype at) { return int64_t(uint8_t(begin[at]) | uint8_t(begin[at + 1]) << 8); };
    return begin.size() == 10 && side(6) * side(8) <= LargestGif;
}

// One open picture file, its header read.
class PictureFile {
public:
    PictureFile(const std::string& path, std::stop_token stop) : device_(file_, stop), stop_(std::move(stop)) {
        static const bool once = [] {
            QLoggingCategory::setFilterRules("qt.gui.imageio*=false");
            QImageReader::setAllocationLimit(int(LargestImage >> 20));
            return true;
        }();
        (void)once;
        const int file = OpenRegular(path);
        if (file < 0 || !file_.open(file, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle) || !FindFormat()) return;
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
        if (const int side = Reduction(stored_, atLeast, reducedFrom); Bmp() && side > 1 && Affordable(stored_)) {
            const qint64 place = device_.pos();  // where the reader left off
            if (std::optional<BmpBands> bands = BmpBands::In(device_)) {
                const auto rows = [&bands](int top, int count) { return bands->Rows(top, count); };
                return Reduced(stored_, side, rows, stop_);
            }
            device_.seek(place);
        }
        const QImage image = Decoded(atLeast);
        if (image.isNull()) return std::nullopt;
        const Size size{image.width(), image.height()};
        const auto rows = [&image](int top, int count) { return image.copy(0, top, image.width(), count); };
        return Reduced(size, Reduction(size, atLeast, reducedFrom), rows, stop_);
    }

private:
    // False if the file is none of the three, or one that would take too much.
    bool FindFormat() {
        const char* format = FormatOf(device_);
        if (!format) return false;
        if (std::strcmp(format, "gif") == 0 && !IsBearableGif(device_)) return false;
        if (std::strcmp(format, "jpeg") == 0) {
            const std::optional<JpegHead> head = ReadJpegHead(device_);
            if (!head || head->coefficientBytes > LargestCoefficients) return false;
            device_.LimitPasses(head->passesAt, MostPasses);
        }
        format_ = format;
        return true;
    }
    bool Jpeg() const { return std::strcmp(format_, "jpeg") == 0; }
    bool Bmp() const { return std::strcmp(format_, "bmp") == 0; }

    QImage Decoded(Size atLeast) {
        const int eighths = Jpeg() ? EighthsFor(Turned(atLeast)) : 8;
        if (eighths == 0 || (eighths == 8 && !Affordable(stored_))) return {};
        if (eighths < 8) {
            const Size part = Part(eighths);
            reader_.setScaledSize({part.width, part.height});
        }
        const QImage image = reader_.read();
        // A GIF may be told to be of another size than it is decoded at.
        const Size told = Upright(), is{image.width(), image.height()};
        return eighths == 8 && is != told ? QImage() : image;
    }

    Size Turned(Size size) const { return turned_ ? Size{size.height, size.width} : size; }

    Size Part(int eighths) const {
        const auto part = [eighths](int whole) { return int((int64_t(whole) * eighths + 7) / 8); };
        return {part(stored_.width), part(stored_.height)};
    }

    static bool Affordable(Size size) { return int64_t(size.width) * size.height <= LargestPicture; }
    static bool Fits(Size size) { return int64_t(size.width) * size.height * 4 <= LargestImage; }

    // A JPEG comes at any eighth of its size for a fraction of the work. The smallest that suffices, or
    // the largest that fits where all of it is too much; 0 if none is.
    int EighthsFor(Size atLeast) const {
        const bool all = atLeast.width <= 0 || atLeast.height <= 0;
        int best = 0;
        for (int eighths = 1; eighths <= 8; ++eighths) {
            const Size part = Part(eighths);
            // The decoder may go one step further than asked and shrink the result.
            if (!Fits(Part(std::min(eighths + 1, 8)))) break;
            best = eighths;
            if (!all && part.width >= atLeast.width && part.height >= atLeast.height) break;
        }
        return best;
    }

    QFile file_;
    StoppableFile device_;
    std::stop_token stop_;
    QImageReader reader_;
    const char* format_ = nullptr;
    Size stored_;
    bool turned_ = false;
};

}  // namespace

std::optional<Size> ReadPictureSize(const std::string& path) {
    const PictureFile file(path, {});
    if (!file.Valid()) return std::nullopt;
    return file.Upright();
}

std::optional<Picture> ReadPicture(const std::string& path, Size atLeast, std::stop_token stop, int64_t reducedFrom) {
    PictureFile file(path, std::move(stop));
    if (!file.Valid()) return std::nullopt;
    std::optional<Surface> image = file.Read(atLeast, reducedFrom);
    if (!image) return std::nullopt;
    return Picture{file.Upright(), std::move(*image)};
}
