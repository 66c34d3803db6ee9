// The advertisement pictures of a storefront as a show for its home page: in a player that the
// visitor's browser loads, or changed by a script of the page's own.
#ifndef RK_WIDGETS_SLIDESHOW_H_
#define RK_WIDGETS_SLIDESHOW_H_

#include <string>

#include "site/page_context.h"
#include "value/value.h"

namespace rk::widgets {

// Where a browser without the player is sent, as the deployment says.
struct PlayerAddresses {
  std::string download;
  std::string page;
};

struct SlideshowParameters {
  Value Style;        // "1" for the player; anything else, Null included, for the script
  Value FlashWidth;   // of the pictures, in pixels
  Value FlashHeight;  // of the pictures, in pixels
  Value textheight;   // of the player's captions, in pixels; the script has none
  Value Agent_User;
};

// Raises 5 where the player has no picture to show; the script takes none as it takes many.
std::string ShowFlash_Ad(const site::PageContext& page, const PlayerAddresses& player,
                         const SlideshowParameters& parameters);

std::string pictures_sql(const Value& agent_user);

}  // namespace rk::widgets

#endif  // RK_WIDGETS_SLIDESHOW_H_
