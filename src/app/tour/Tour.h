#pragma once

class QString;

namespace pendra {

/// Draws every window, with a sample document where it shows one, into pictures in `folder`, which is made.
/// Needs no display, and neither reads nor writes anything of the user's. False when a picture is missing.
[[nodiscard]] bool drawTour(const QString& folder);

}  // namespace pendra
