#include "core/state/frmmain.h"

#include <utility>

#include "core/base/failure.h"

namespace sarnel {

namespace {

using platform::Rect;

// Until a skin places them, controls stand where skin 1 has them; sizes in pixels.
constexpr Rect kWindow{0, 0, 293, 277};
constexpr Rect kListArea{6, 27, 287, 208};
constexpr Rect kInsideList{0, 0, 281, 181};
constexpr Rect kScrollText{54, 10, 239, 24};
constexpr Rect kInfoDisplay{128, 250, 200, 264};
constexpr Rect kOneLine{0, 0, 100, 13};

// What the lists of the window have in common.
JListStored ListOfLayout() {
    JListStored stored;
    stored.sorted = false;
    stored.listFont = {u"Lucida Sans Unicode", 8.25, false, false};
    return stored;
}

}  // namespace

frmMAIN::frmMAIN(platform::WindowSystem& windows)
    : Widget(windows, 0, kWindow),
      picScrollText(windows, HWnd(), kScrollText),
      picInfoDisplay(windows, HWnd(), kInfoDisplay),
      lstPlaylist(windows, HWnd(), kListArea, ListOfLayout()),
      icon_(windows.NewHandle()) {
    MakePanels();
    MakeLabels();
    MakeControls();
    AttachHandlers();
}

void frmMAIN::MakePanels() {
    for (Long i = 0; i < kPanelCount; ++i) {
        auto& panel =
            picFrame.Add(std::make_unique<platform::PictureBox>(windows_, HWnd(), kListArea));
        panel.SetFont({u"Tahoma", 9.75, true, false});
        panel.Visible(false);
    }
    const auto panel = [this](Long index) { return picFrame(index).HWnd(); };
    txtLyrics = std::make_unique<platform::TextBox>(windows_, panel(kLyricsPanel), kInsideList,
                                                    platform::TextBox::Kind::kPage);
    txtLyrics->LinesPerNotch(0);  // its slider turns with the wheel and takes the text along
    JListStored browser = ListOfLayout();
    browser.showNumeric = false;
    browser.showItemImages = true;
    lstFilesAndFolders =
        std::make_unique<JList>(windows_, panel(kBrowserPanel), kInsideList, browser);
    txt_SearchFilter = std::make_unique<platform::TextBox>(windows_, panel(kSearchPanel), Rect{});
    lst_Search =
        std::make_unique<JList>(windows_, panel(kSearchPanel), kInsideList, ListOfLayout());
}

void frmMAIN::MakeLabels() {
    const auto label = [this](Long panel) {
        return std::make_unique<platform::Label>(windows_, picFrame(panel).HWnd(), kOneLine);
    };
    lblFrameAddPathName = label(kBrowserPanel);
    lblFrameAddPathName->Opaque(true);
    lblFrameAddPathName->Visible(false);  // it lies on the list's last row
    lblFileTypesSupported = label(kAssociationPanel);
    lblFrameFileAssocOK = label(kAssociationPanel);
    lblFrameFileAssocOK->Caption(u"Close frame");
    lblFrameInfoDescription = label(kInformationPanel);
    lblFrameInfoDescription->Caption(u"Info");
    lblEffects.First(kFirstEffect);
    for (Long i = kFirstEffect; i < kSliderCount; ++i) {
        lblEffects.Add(label(kEffectsPanel));
    }
}

void frmMAIN::MakeControls() {
    const Handle effects = picFrame(kEffectsPanel).HWnd();
    const auto add = [](auto& array, auto control, bool inLayout) {
        control->Visible(inLayout);
        array.Add(std::move(control), inLayout);
    };
    for (Long i = 0; i < kButtonCount; ++i) {
        const bool reset = i == kResetEffectsButton;
        const Handle parent = reset ? effects : HWnd();
        add(btnSkin, std::make_unique<JButton>(windows_, parent, Rect{}),
            i == kExitButton || reset);
    }
    for (Long i = 0; i < kToggleCount; ++i) {
        add(tglSkin, std::make_unique<JToogle>(windows_, HWnd(), Rect{}), i == kTopMostToggle);
    }
    for (Long i = 0; i < kSliderCount; ++i) {
        const Handle parent = i >= kFirstEffect    ? effects
                              : i == kLyricsSlider ? picFrame(kLyricsPanel).HWnd()
                                                   : HWnd();
        add(sldSkin, std::make_unique<JSlider>(windows_, parent, Rect{}), i != kVolumeSlider);
    }
}

void frmMAIN::Picture(platform::PictureRef value) {
    picture_ = std::move(value);
    DrawPicture();
}

void frmMAIN::SizeToPicture() {
    const platform::Surface& picture = *Needed(picture_);
    Move(Left(), Top(), picture.Width(), picture.Height());
    DrawPicture();
    picture.LetFinerGo();
}

// Comes with each show, too, which changes nothing.
void frmMAIN::Resized() {
    if (!(Canvas().GetSize() == drawn_)) {
        DrawPicture();
    }
}

void frmMAIN::Redraw() {
    DrawPicture();
    if (picture_ != nullptr) {
        picture_->LetFinerGo();
    }
}

void frmMAIN::DrawPicture() {
    if (picture_ == nullptr) {
        return;
    }
    platform::Surface& face = Canvas();
    face.FillRect(face.Bounds(), BackColor());
    face.BitBlt(face.Bounds(), *picture_, {0, 0});
    drawn_ = face.GetSize();
    ShowFace();
}

}  // namespace sarnel
