// The dialog "Busca Imagens" in which the player chooses the picture of a new game.
// Lengths are twips.
#pragma once
#include "browser/thumbs_ctl.h"
#include "platform/controls/folder_lists.h"
#include "platform/controls/form.h"
#include "shell/skin.h"
#include "shell/uc_firefox_wait.h"

class frmThumbs : public Form {
public:
    // `startGame` is given the full path of the picture that the player has chosen, while the dialog still stands;
    // it hides it when it likes.
    using Chosen = std::function<void(const std::string& Filename)>;
    frmThumbs(Skin& skin, Chosen startGame);

    DriveListBox Drive1{"Drive1"};
    DirListBox Dir1{"Dir1"};
    SkinLabel Label1{"Label1"};
    ThumbsCtl ThumbsCtl1{"ThumbsCtl1", Label1};
    ucFirefoxWait ucFirefoxWait1{"ucFirefoxWait1"};
    CommandButton cmdVoltar{"cmdVoltar", "&Cancelar"};
    CommandButton Command1{"Command1", "&OK"};

    void Form_Activate();
    void Form_Unload();
    void Drive1_Change();
    void Dir1_Change();
    void Command1_Click();
    void cmdVoltar_Click();
    void Form_DropFile(const std::string& Path);

    // The chosen picture becomes a game; the dialog is unloaded at the end, game or not.
    void StartGame(int16_t& PicIndex, std::string& Filename);

    // Fits the miniature into its panel, in the proportions of the picture as loaded. Needs no open dialog.
    static void SetSize(const Picture& PicTemp, const PictureBox& Picture1, Image& imgMaster);

private:
    void BuildControls();
    void BindHandlers();
    // The folder "Imagens" of the program, however its name is written.
    static std::optional<std::string> GamePictures();

    Skin& skin_;
    Chosen startGame_;
};
