// Where the toolkit speaks: its installed translation first, our own words below it.
#include "platform/qt/translations.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <array>
#include <cstring>

namespace {

struct Phrase {
    const char* english;
    const char* portuguese;
};

// The texts of the file and colour dialogs, of text fields and of buttons.
constexpr std::array Phrases = {
    Phrase{"OK", "OK"},
    Phrase{"&OK", "&OK"},
    Phrase{"Cancel", "Cancelar"},
    Phrase{"&Cancel", "&Cancelar"},
    Phrase{"&Yes", "&Sim"},
    Phrase{"&No", "&Não"},
    Phrase{"Close", "Fechar"},
    Phrase{"Open", "Abrir"},
    Phrase{"&Open", "&Abrir"},
    Phrase{"Save", "Salvar"},
    Phrase{"&Save", "&Salvar"},
    Phrase{"Save As", "Salvar como"},
    Phrase{"&Choose", "&Escolher"},
    Phrase{"Back", "Voltar"},
    Phrase{"Go back", "Volta"},
    Phrase{"Forward", "Avançar"},
    Phrase{"Go forward", "Avança"},
    Phrase{"Parent Directory", "Pasta acima"},
    Phrase{"Go to the parent directory", "Vai para a pasta acima"},
    Phrase{"Create New Folder", "Criar nova pasta"},
    Phrase{"Create a New Folder", "Cria uma nova pasta"},
    Phrase{"&New Folder", "&Nova pasta"},
    Phrase{"New Folder", "Nova pasta"},
    Phrase{"List View", "Lista"},
    Phrase{"Change to list view mode", "Mostra só os nomes"},
    Phrase{"Detail View", "Detalhes"},
    Phrase{"Change to detail view mode", "Mostra os detalhes"},
    Phrase{"Sidebar", "Barra lateral"},
    Phrase{"List of places and bookmarks", "Lugares e marcadores"},
    Phrase{"Files", "Arquivos"},
    Phrase{"Look in:", "Pasta:"},
    Phrase{"File &name:", "&Nome do arquivo:"},
    Phrase{"Files of type:", "Tipo:"},
    Phrase{"Directory:", "Pasta:"},
    Phrase{"&Rename", "&Renomear"},
    Phrase{"&Delete", "&Excluir"},
    Phrase{"Delete", "Excluir"},
    Phrase{"Show &hidden files", "Mostrar arquivos &ocultos"},
    Phrase{"Recent Places", "Lugares recentes"},
    Phrase{"Remove", "Remover"},
    Phrase{"My Computer", "Meu computador"},
    Phrase{"Computer", "Computador"},
    Phrase{"Name", "Nome"},
    Phrase{"Size", "Tamanho"},
    Phrase{"Kind", "Tipo"},
    Phrase{"Type", "Tipo"},
    Phrase{"Date Modified", "Modificado em"},
    Phrase{"All Files (*)", "Todos os arquivos (*)"},
    Phrase{"Drive", "Unidade"},
    Phrase{"Folder", "Pasta"},
    Phrase{"File", "Arquivo"},
    Phrase{"%1\nFile not found.\nPlease verify the correct file name was given.",
           "%1\nArquivo não encontrado.\nConfira o nome do arquivo."},
    Phrase{"%1\nDirectory not found.\nPlease verify the correct directory name was given.",
           "%1\nPasta não encontrada.\nConfira o nome da pasta."},
    Phrase{"%1 already exists.\nDo you want to replace it?", "%1 já existe.\nDeseja substituí-lo?"},
    Phrase{"Are you sure you want to delete '%1'?", "Deseja mesmo excluir '%1'?"},
    Phrase{"Could not delete directory.", "Não foi possível excluir a pasta."},
    Phrase{"Select Color", "Escolher cor"},
    Phrase{"&Basic colors", "Cores &básicas"},
    Phrase{"&Custom colors", "Cores &personalizadas"},
    Phrase{"&Add to Custom Colors", "&Adicionar às personalizadas"},
    Phrase{"&Pick Screen Color", "&Capturar cor da tela"},
    Phrase{"Cursor at %1, %2\nPress ESC to cancel", "Ponteiro em %1, %2\nESC cancela"},
    Phrase{"Hu&e:", "&Matiz:"},
    Phrase{"&Sat:", "&Sat.:"},
    Phrase{"&Val:", "&Valor:"},
    Phrase{"&Red:", "Verm&elho:"},
    Phrase{"&Green:", "Ver&de:"},
    Phrase{"Bl&ue:", "A&zul:"},
    Phrase{"&HTML:", "&HTML:"},
    Phrase{"&Undo", "&Desfazer"},
    Phrase{"&Redo", "&Refazer"},
    Phrase{"Cu&t", "Recor&tar"},
    Phrase{"&Copy", "&Copiar"},
    Phrase{"&Paste", "Co&lar"},
    Phrase{"Select All", "Selecionar tudo"},
};

class OwnWords : public QTranslator {
public:
    using QTranslator::QTranslator;
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* source, const char*, int) const override {
        for (const Phrase& phrase : Phrases)
            if (source && std::strcmp(source, phrase.english) == 0) return QString::fromUtf8(phrase.portuguese);
        return {};
    }
};

}  // namespace

void InstallPortuguese() {
    QLocale::setDefault(QLocale(QLocale::Portuguese, QLocale::Brazil));
    static OwnWords own;
    static QTranslator whole;
    QCoreApplication::installTranslator(&own);
    // Asked first, since it was installed last.
    if (whole.load("qtbase_pt_BR", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&whole);
}
