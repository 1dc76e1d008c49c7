// How many pixels of the screen each of the component's gets, by what the screen says of itself.
#pragma once

#include <QObject>
#include <functional>
#include <optional>
#include <string_view>

#include "platform/base/types.h"
#include "platform/desktop/x_watch.h"

class QScreen;

namespace platform::desktop {

/// How fine pictures have to be for a factor, so that words on the screen are about as sharp as if
/// they had been drawn for it.
Long DensityFor(double factor);

/// The factor of a screen of so many dots per inch, 96 of which are 1: in quarters, and within the
/// scales that can be asked for.
double FactorFor(double dotsPerInch);

/// What the text of the X server's resources says of the screen's dots per inch.
std::optional<double> DotsPerInchIn(std::string_view resources);

/// What the screens ask for, and when that changes. The toolkit's pixels may be larger than those
/// of the screen; that is not counted here.
class ScreenFactor {
  public:
    /// `onChange` is called from the event loop.
    explicit ScreenFactor(std::function<void()> onChange);

    double Get() const { return factor_; }

  private:
    void Follow(QScreen* screen);
    void Changed(double dotsPerInch);

    std::function<void()> onChange_;
    double factor_;
    XWatch resources_;
    QObject context_;  ///< whatever is connected ends with it
};

}  // namespace platform::desktop
