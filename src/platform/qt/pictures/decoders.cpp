// The program's own image plug-in, which passes on to the toolkit's two.
#include "platform/qt/pictures/decoders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImageIOPlugin>
#include <QImageReader>
#include <QPluginLoader>
#include <QtPlugin>

class PictureDecoders : public QImageIOPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QImageIOHandlerFactoryInterface_iid FILE "decoders.json")

public:
    // Nothing where no format is named: the program names it, and the toolkit's own pictures are neither.
    Capabilities capabilities(QIODevice*, const QByteArray& format) const override {
        return format == "gif" || format == "jpeg" || format == "jpg" ? CanRead : Capabilities();
    }

    QImageIOHandler* create(QIODevice* device, const QByteArray& format) const override {
        const QPluginLoader found(format == "gif" ? "imageformats/qgif" : "imageformats/qjpeg");
        QPluginLoader decoder(QFileInfo(found.fileName()).canonicalFilePath());  // the system knows no other names
        const auto* plugin = qobject_cast<QImageIOPlugin*>(decoder.instance());
        return plugin ? plugin->create(device, format) : nullptr;
    }
};

Q_IMPORT_PLUGIN(PictureDecoders)

// The toolkit looks into each of its folders once for each kind of plug-in. So the folders get names that lead nowhere
// while it looks for those for images, and lead to the folders afterwards.
void KeepToPictureDecoders() {
    const QStringList folders = QCoreApplication::libraryPaths();
    const auto name = [](qsizetype index) { return QString("plugins%1").arg(index); };
    QStringList names;
    for (qsizetype i = 0; i < folders.size(); ++i) names.append(name(i) + ':');
    QCoreApplication::setLibraryPaths(names);
    QImageReader::supportedImageFormats();
    for (qsizetype i = 0; i < folders.size(); ++i) QDir::addSearchPath(name(i), folders[i]);
}

#include "decoders.moc"
