// Pictures as the program asks for them, and style sheets. The toolkit's own decoders and its parser are not
// instrumented: the fuzzer goes by the ways that their answers take through our code.
#include <QApplication>

#include "platform/qt/desktop.h"
#include "platform/qt/pictures/picture_file.h"
#include "tests/fuzz/readers.h"
#include "tests/support/temp_folder.h"

namespace {

struct Desk {
    int count = 1;
    char name[5] = "fuzz", *arguments[2] = {name, nullptr};
    bool offscreen = qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application{count, arguments};
    QtDesktop desktop;
    TempFolder folder;
    Desk() { InstallBackend(&desktop); }
};

Desk& TheDesk() {
    static Desk* desk = new Desk;  // never torn down, as in the program
    return *desk;
}

}  // namespace

// As a thumbnail, decoded in a yield; as large as it is; in bands, reduced. Large claims only now and then: they cost
// time.
void FuzzPicture(const std::string& bytes) {
    static int runs = 0;
    Desk& desk = TheDesk();
    const std::string path = desk.folder.Write("a.jpg", bytes);
    const std::optional<Size> size = PictureSize(path);
    if (size && int64_t(size->width) * size->height > 1'000'000 && ++runs % 100 != 0) return;
    const auto check = [&size](const std::optional<Picture>& picture, Size atLeast) {
        if (!picture) return;
        Require(size && picture->Natural == *size);
        const int width = picture->Image.Width(), height = picture->Image.Height();
        Require(width > 0 && width <= size->width + 1 && height > 0 && height <= size->height + 1);
        Require(width >= std::min(atLeast.width, size->width) && height >= std::min(atLeast.height, size->height));
    };
    DoEventsDecoding(path, {109, 100});
    check(LoadPicture(path, {109, 100}), {109, 100});
    check(LoadPicture(path), {});
    check(ReadPicture(path, {7, 5}, {}, 1), {7, 5});
}

void FuzzSkin(const std::string& bytes) { (void)TheDesk().desktop.LoadSkin(bytes); }
