// Image, push button and frame.
#include <QFrame>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <cmath>

#include "platform/controls/simple_controls.h"
#include "platform/drawing/picture.h"
#include "platform/qt/widgets/board.h"
#include "platform/qt/widgets/peer.h"

namespace {

// --- Image -------------------------------------------------------------------------------

class ImageWidget : public QWidget {
public:
    ImageWidget(Image& image, QWidget* parent) : QWidget(parent), image_(image) {
        setContextMenuPolicy(Qt::PreventContextMenu);
    }

    void TakePicture() {
        fitted_ = {};
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        const int edge = image_.BorderStyle() == Border::None ? 0 : EdgeWidth;
        const QRect inside = rect().adjusted(edge, edge, -edge, -edge);
        Fit(inside.size());
        QPainter painter(this);
        if (fitted_.Width() > 0)
            painter.drawImage(inside, QImage(reinterpret_cast<const uchar*>(fitted_.Row(0)), fitted_.Width(),
                                             fitted_.Height(), qsizetype(fitted_.Stride()) * 4, QImage::Format_RGB32));
        painter.end();
        DrawEdge(*this, image_.BorderStyle());
    }

    void mousePressEvent(QMouseEvent* event) override {
        event->accept();
        const QPointF at = event->position();
        image_.DeliverMouseDown(ButtonBits(event->button()), ShiftBits(event->modifiers()), float(at.x()),
                                float(at.y()));
    }

private:
    // The picture at the size it has on the screen, stretched once.
    void Fit(QSize logical) {
        const double scale = devicePixelRatioF();
        const Size wanted{int(std::lround(logical.width() * scale)), int(std::lround(logical.height() * scale))};
        const auto& picture = image_.GetPicture();
        if (!picture || picture->Image.Width() <= 0 || wanted.width <= 0 || wanted.height <= 0) {
            fitted_ = {};
            return;
        }
        if (fitted_.Width() == wanted.width && fitted_.Height() == wanted.height) return;
        fitted_ = Stretched(picture->Image, wanted);
        fitted_.Draw({});  // a picture of one colour has no pixels otherwise
    }

    Image& image_;
    Surface fitted_;
};

class ImagePeer : public QtPeer {
public:
    ImagePeer(Image& image, QWidget* parent) : QtPeer(image, new ImageWidget(image, parent)) {}

    void Mirror(Aspect aspect) override {
        if (!Widget()) return;
        QtPeer::Mirror(aspect);
        if (aspect == Aspect::Content || aspect == Aspect::Look) static_cast<ImageWidget&>(*Widget()).TakePicture();
    }
};

// --- Push button ---------------------------------------------------------------------------

// No button is the window's default one; Return presses the one that has the focus.
class ButtonWidget : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            click();
        else
            QPushButton::keyPressEvent(event);
    }
};

class ButtonPeer : public QtPeer {
public:
    ButtonPeer(CommandButton& button, QWidget* parent)
        : QtPeer(button, new ButtonWidget(ToText(button.Caption()), parent)) {
        auto& widget = static_cast<QPushButton&>(*Widget());
        widget.setAutoDefault(false);
        widget.setDefault(false);
        widget.setFont(ControlFont({}));
        widget.setContextMenuPolicy(Qt::PreventContextMenu);
        QObject::connect(&widget, &QPushButton::clicked, &widget, [&button] { button.DeliverClick(); });
    }
};

// --- Frame -----------------------------------------------------------------------------------

class FrameWidget : public QWidget {
public:
    explicit FrameWidget(QWidget* parent) : QWidget(parent) {}

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::Light));
        painter.drawRect(QRectF(rect()).adjusted(1.5, 1.5, -0.5, -0.5));
        painter.setPen(palette().color(QPalette::Dark));
        painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -1.5, -1.5));
    }
};

}  // namespace

std::unique_ptr<QtPeer> MakeImagePeer(Image& image, QWidget* parent) {
    return std::make_unique<ImagePeer>(image, parent);
}

std::unique_ptr<QtPeer> MakeButtonPeer(CommandButton& button, QWidget* parent) {
    return std::make_unique<ButtonPeer>(button, parent);
}

std::unique_ptr<QtPeer> MakeFramePeer(Frame& frame, QWidget* parent) {
    return std::make_unique<QtPeer>(frame, new FrameWidget(parent));
}
