// The main window and everything on it. This class is the window's static layout: which controls
// there are and in what. What they do is in the modules; what they look like comes from the skin.
#pragma once

#include <memory>
#include <vector>

#include "controls/jbutton.h"
#include "controls/jslider.h"
#include "controls/jtoogle.h"
#include "controls/list/jlist.h"
#include "core/base/failure.h"
#include "core/state/controlnames.h"
#include "menus/jpopupmenu.h"
#include "platform/widgets/label.h"
#include "platform/widgets/picture_box.h"
#include "platform/widgets/text_box.h"
#include "shell/jhotkeys.h"

namespace sarnel {

/// Controls of one kind that are told apart by an index; the lowest need not be 0. Those in the
/// window's static layout are there at once. The others are hidden until they are loaded; handlers
/// can be attached to them before.
template <class T>
class ControlArray {
  public:
    T& Add(std::unique_ptr<T> control, bool inLayout = true) {
        controls_.push_back(std::move(control));
        loaded_.push_back(inLayout);
        return *controls_.back();
    }
    /// Makes an item a copy of the first one, still hidden. Fails if it is loaded already.
    void Load(Long index) {
        const auto slot = static_cast<std::size_t>(index - first_);
        T& item = *controls_.at(slot);
        if (loaded_[slot]) {
            throw ComponentError(360, u"Object already loaded");
        }
        item.CopyFrom(*controls_.front());
        loaded_[slot] = true;
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
    std::vector<bool> loaded_;
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

    /// The icon of the window, in the tray and wherever a desktop shows one.
    Handle Icon() const { return icon_; }

    /// The window's background; drawn at its left top corner.
    platform::PictureRef Picture() const { return picture_; }
    void Picture(platform::PictureRef value);
    /// Gives the window its picture's size. Without a picture: fails.
    void SizeToPicture();

    std::shared_ptr<JPopupMenu> hMenu;  ///< null until the menu is built
    std::unique_ptr<JHotKeys> hKeys;

    // Their items by name: core/state/controlnames.h.
    ControlArray<platform::PictureBox> picFrame;
    ControlArray<JButton> btnSkin;
    ControlArray<JToogle> tglSkin;
    ControlArray<JSlider> sldSkin;
    ControlArray<platform::Label> lblEffects;  ///< from kFirstEffect on
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

  protected:
    void Resized() override;
    void LooksChanged() override { drawn_ = {}; }
    void Redraw() override;

  private:
    // Defined with Load and Unload in core/mainwindow.cpp.
    void AttachHandlers();
    void MakePanels();
    void MakeLabels();
    void MakeControls();
    void DrawPicture();

    const Handle icon_;
    platform::PictureRef picture_;
    platform::Size drawn_;  ///< of the face, when the picture was last drawn
    bool loaded_ = false;
};

}  // namespace sarnel
