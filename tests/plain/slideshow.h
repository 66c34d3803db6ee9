// The slideshow row by row: lists that grow by one text a row, then every line of the page in its
// order. What ShowFlash_Ad must equal.
#ifndef RK_TESTS_PLAIN_SLIDESHOW_H_
#define RK_TESTS_PLAIN_SLIDESHOW_H_

#include <string>
#include <vector>

#include "widgets/slideshow.h"

namespace rk::plain {

struct Picture {
  Value picurl;
  Value link;
  Value adinfo;
};

// With at least one picture; of none the player's form has no text.
std::string slideshow(const std::vector<Picture>& pictures, const widgets::PlayerAddresses& player,
                      const widgets::SlideshowParameters& parameters);

}  // namespace rk::plain

#endif  // RK_TESTS_PLAIN_SLIDESHOW_H_
