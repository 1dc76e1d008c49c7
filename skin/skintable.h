// SkinTable, the looks of the window as data: numbered rows of text and, in a number space of their
// own, numbered pictures. A skin is a block of rows that begins at its base. What is not there, or
// is no number where one is asked for, is a failure and thrown as a ComponentError, so that the
// step that needs it is skipped.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/drawing/finer_pictures.h"
#include "platform/drawing/surface.h"
#include "skin/embedded.h"

namespace sarnel {

using platform::Long;

class SkinTable {
  public:
    /// What the program carries.
    SkinTable() : SkinTable(EmbeddedSkinTable(), EmbeddedPictures()) {}
    /// `text` has lines as assets/funky_blue/rows.txt does; a line that is no row is left out.
    SkinTable(std::string_view text, const std::vector<EmbeddedPicture>& pictures);

    // The two read operations.

    /// Fails if the row is empty.
    const std::u16string& Row(Long number) const;
    /// Decoded at the first time and shared from then on. Fails if there is no such picture, or it
    /// is damaged.
    platform::PictureRef Bitmap(Long id);

    // Other looks than the program carries, for trying them out.

    /// No text empties the row.
    void Row(Long number, std::u16string text);
    /// The bytes of a picture file must outlive the table. A finer picture comes with its plain
    /// one, whose size in units it has; one that is damaged is as good as none.
    void Bitmap(Long id, std::string_view file, Long density = 1);

    // A row as what it stands for.

    Long Number(Long row) const;
    bool Boolean(Long row) const;

  private:
    void ReadLine(std::string_view line);

    struct Picture {
        std::string_view file;
        std::shared_ptr<platform::FinerPictures> finer;
        platform::PictureRef decoded;
    };
    std::map<Long, std::u16string> rows_;
    std::map<Long, Picture> pictures_;
};

/// The rows of one skin from some row on, addressed by offset. Of no skin every read fails.
class SkinRows {
  public:
    SkinRows(SkinTable& table, Long base) : SkinRows(table, base, 0) {}
    SkinRows From(Long offset) const { return {*table_, base_, from_ + offset}; }

    std::u16string Text(Long offset) const { return table_->Row(RowAt(offset)); }
    Long Number(Long offset) const { return table_->Number(RowAt(offset)); }
    bool Boolean(Long offset) const { return table_->Boolean(RowAt(offset)); }
    /// The picture whose number the row holds.
    platform::PictureRef PictureNamed(Long offset) const { return table_->Bitmap(Number(offset)); }
    /// The picture whose number is that of the row.
    platform::PictureRef PictureOf(Long offset) const { return table_->Bitmap(RowAt(offset)); }

  private:
    SkinRows(SkinTable& table, Long base, Long from) : table_(&table), base_(base), from_(from) {}
    Long RowAt(Long offset) const;

    SkinTable* table_;  // not owned; outlives the application of a skin
    Long base_;         // 0: no skin
    Long from_;
};

}  // namespace sarnel
