// What a crash, a kill or a power cut may cost is made up for here. The component writes its list
// once, when its window closes, and the old file goes first. So a copy of the list lies in the
// user's state folder, with a mark that says how the last run ended; the next start looks at both
// before the component reads its file.
//
// While a run is on there is a copy from its beginning (the file itself under a second name, where
// the disk allows that) and it is never older than ListKeeper lets it be. It outlives the end of
// the run: the file that has just been saved may not be on the disk yet. Which of the two the next
// start takes:
//
//     the run before          the file                      then
//     ended in order          as it was left, or a list     the file
//                             missing                       the file: somebody removed it
//                             cut, no list, unreadable      the copy
//     did not                 missing, cut, no list, ...    the copy
//                             as that run found it          the copy
//                             another list                  the file: it was saved after all
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "controls/list/listcopy.h"
#include "host/rescue/copy_writer.h"
#include "host/rescue/list_file.h"
#include "host/rescue/run_mark.h"

namespace veldrin {

class Rescue {
  public:
    /// Where what lies; raw bytes.
    struct Places {
        std::string list;
        std::string copy;
        std::string mark;
    };

    /// Of the list in a component directory, which exists; the state folder likewise.
    static Places PlacesFor(const std::string& directory, const std::string& stateFolder);

    /// What is to be told to the user, and done, at a start.
    struct Findings {
        std::vector<std::string> notices;  ///< raw bytes, a line each
        bool putBack = false;              ///< the list is that of the copy
        bool mayPlay = true;               ///< false after several starts that broke off at once
    };

    /// So many starts in a row that do not last make the next one a silent one.
    static constexpr int kBrokenStarts = 3;
    /// So long a run has to last, in milliseconds, for its start not to be one of them.
    static constexpr platform::Millis kLasting = 20000;

    explicit Rescue(Places places);
    ~Rescue();
    Rescue(const Rescue&) = delete;
    Rescue& operator=(const Rescue&) = delete;

    /// To be done before the component reads its list, by who has the lock of the instance.
    Findings Begin();
    /// Whether a copy can be kept: somebody else may have the mark, or there is no place for it.
    bool KeepsCopy() const { return mark_.has_value(); }
    /// Whether there was a copy of the list from the beginning.
    bool HasFirstCopy() const { return hasFirstCopy_; }
    const std::string& ListPath() const { return places_.list; }

    /// Only where a copy is kept.
    CopyWriter& Writer() { return writer_; }
    /// The run has lasted for kLasting.
    void Lasted();

    /// The list has been saved, or never will be: the end in order. Answers what is to be told, if
    /// anything. Done at the latest when this object goes; a second time does nothing.
    std::optional<std::string> Finish();

  private:
    bool CopyIsToBePutBack(const ListState& glance) const;
    void PutBack(Findings& findings);

    Places places_;
    CopyWriter writer_;
    std::optional<RunMark> mark_;
    bool hasFirstCopy_ = false;
};

/// Sets a list that cannot be read aside, which a run would overwrite, and tells. For starts that
/// keep no copy.
std::optional<std::string> SetUnreadableListAside(const std::string& list);

}  // namespace veldrin
