// A desktop on Qt without a screen, installed for a test.
#pragma once
#include <QCoreApplication>
#include <QElapsedTimer>

#include "platform/qt/desktop.h"
#include "tests/support/temp_folder.h"

class QtFixture {
public:
    // Of a machine that is the same everywhere.
    struct Desktop : QtDesktop {
        std::vector<Volume> Volumes() override {
            return {{"/", "Computador", Volume::Kind::Computer},
                    {"/home/a<b", "Pasta pessoal", Volume::Kind::Home},
                    {"/home/a<b/Fotos", "Minhas imagens", Volume::Kind::Pictures},
                    {"/jogo", "Imagens", Volume::Kind::GamePictures},
                    {"/media/x", "x"}};
        }
    };

    QtFixture() : before_(InstallBackend(&desktop)) {}
    ~QtFixture() { InstallBackend(before_); }
    Desktop desktop;

private:
    Backend* before_;
};

// Lets events in until the condition holds; false if it never does.
inline bool Comes(const std::function<bool()>& condition) {
    QElapsedTimer since;
    for (since.start(); !condition() && since.elapsed() < 10000;) QCoreApplication::processEvents();
    return condition();
}
