// The main window and everything on it. This class is the window's static layout: which controls
// there are and in what. What they do is in the modules; what they look like comes from the skin.
#pragma once

#include <memory>
#include <vector>

#include "controls/jbutton.h"
#include "controls/jslider.h"
#include "controls/list/jlist.h"
#include "menus/jpopupmenu.h"
#include "platform/label.h"
#include "platform/picture_box.h"
#include "platform/text_box.h"
#include "shell/jhotkeys.h"

namespace sarnel {

/// Controls of one kind that are told apart by an index; the lowest need not be 0.
template <class T>
class ControlArray {
  public:
    T& Add(std::unique_ptr<T> control) {
        controls_.push_back(std::move(control));
        return *controls_.back();
    }
    void First(Long index) { first_ = index; }
    Long LowestIndex() const { return first_; }
    Long HighestIndex() const { return first_ + static_cast<Long>(controls_.size()) - 1; }
    /// The item must exist.
    T& operator()(Long index) const {
        return *controls_.at(static_cast<std::size_t>(index - first_));
    }

  private:
    Long first_ = 0;
    std::vector<std::unique_ptr<T>> controls_;
};

class frmMAIN : public platform::Widget {
  public:
    /// Makes the hidden window with its controls; start-up runs in Load.
    explicit frmMAIN(platform::WindowSystem& windows);

    /// The load event, once: hooks, then settings.
    void Load();
    bool IsLoaded() const { return loaded_; }
    /// The unload event: playback stops, the playlist is written, hooks and menu go.
    void Unload();

    std::u16string Caption() const { return Text(); }
    void Caption(std::u16string_view value) { Text(value); }

    std::shared_ptr<JPopupMenu> hMenu;  ///< null until the menu is built
    std::unique_ptr<JHotKeys> hKeys;

    ControlArray<platform::PictureBox> picFrame;  ///< 0 to 5, the panels
    ControlArray<JButton> btnSkin;                ///< 0 to 12
    ControlArray<JToogle> tglSkin;                ///< 0 to 3
    ControlArray<JSlider> sldSkin;             ///< 0 position, 1 volume, 2 lyrics, 3 to 9 effects
    ControlArray<platform::Label> lblEffects;  ///< 3 to 9
    platform::PictureBox picScrollText;
    platform::PictureBox picInfoDisplay;
    JList lstPlaylist;
    std::unique_ptr<JList> lstFilesAndFolders;  // these lie in the panels
    std::unique_ptr<JList> lst_Search;
    std::unique_ptr<platform::TextBox> txt_SearchFilter;
    std::unique_ptr<platform::TextBox> txtLyrics;
    std::unique_ptr<platform::Label> lblFrameAddPathName;
    std::unique_ptr<platform::Label> lblFileTypesSupported;
    std::unique_ptr<platform::Label> lblFrameFileAssocOK;
    std::unique_ptr<platform::Label> lblFrameInfoDescription;

  private:
    void MakePanels();
    void MakeControls();

    bool loaded_ = false;
};

/// The tooltip's window.
class frmTIP : public platform::Widget {
  public:
    explicit frmTIP(platform::WindowSystem& windows);
};

}  // namespace sarnel
