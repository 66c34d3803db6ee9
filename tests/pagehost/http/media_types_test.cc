#include "pagehost/http/media_types.h"

#include <gtest/gtest.h>

namespace rk::http {
namespace {

TEST(MediaTypes, GoByTheEndingInAnyLetterCase) {
  EXPECT_EQ(media_type("/css/site.css"), "text/css");
  EXPECT_EQ(media_type("/A.PNG"), "image/png");
  EXPECT_EQ(media_type("/a.tar.gz"), "application/gzip");
  EXPECT_EQ(media_type("/a.b/readme"), "application/octet-stream");
  EXPECT_EQ(media_type("/a.unheard"), "application/octet-stream");
}

}  // namespace
}  // namespace rk::http
