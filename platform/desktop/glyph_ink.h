// How far glyphs reach.
#pragma once

#include <QGlyphRun>
#include <QRawFont>
#include <QRect>

namespace platform::desktop {

/// A glyph's pixels, from its place on the base line, without a rim so faint that nobody sees it.
QRect InkOfGlyph(const QRawFont& font, quint32 glyph);

/// Around the ink of all glyphs, in whole pixels, as the toolkit places them; null if there is
/// none. Rims count where they lie inside `inside`: whoever wants to know whether ink leaves a
/// rectangle need not look at every glyph closely.
QRect InkOfRun(const QGlyphRun& run, const QRect& inside);

}  // namespace platform::desktop
