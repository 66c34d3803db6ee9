#include "pagehost/http/media_types.h"

#include "value/text.h"

namespace rk::http {
namespace {

struct MediaType {
  std::string_view ending;
  std::string_view type;
};

// Texts carry no charset: what a file says of itself (a meta element, @charset) decides.
constexpr MediaType kMediaTypes[] = {
    {"html", "text/html"},
    {"htm", "text/html"},
    {"shtml", "text/html"},
    {"css", "text/css"},
    {"js", "text/javascript"},
    {"mjs", "text/javascript"},
    {"json", "application/json"},
    {"map", "application/json"},
    {"webmanifest", "application/manifest+json"},
    {"txt", "text/plain"},
    {"md", "text/markdown"},
    {"csv", "text/csv"},
    {"xml", "text/xml"},
    {"xsl", "text/xml"},
    {"rss", "application/rss+xml"},
    {"atom", "application/atom+xml"},
    {"htc", "text/x-component"},
    {"png", "image/png"},
    {"gif", "image/gif"},
    {"jpg", "image/jpeg"},
    {"jpeg", "image/jpeg"},
    {"webp", "image/webp"},
    {"avif", "image/avif"},
    {"svg", "image/svg+xml"},
    {"ico", "image/x-icon"},
    {"bmp", "image/bmp"},
    {"tif", "image/tiff"},
    {"tiff", "image/tiff"},
    {"woff", "font/woff"},
    {"woff2", "font/woff2"},
    {"ttf", "font/ttf"},
    {"otf", "font/otf"},
    {"eot", "application/vnd.ms-fontobject"},
    {"swf", "application/x-shockwave-flash"},
    {"flv", "video/x-flv"},
    {"mp3", "audio/mpeg"},
    {"wav", "audio/wav"},
    {"wma", "audio/x-ms-wma"},
    {"ogg", "audio/ogg"},
    {"mp4", "video/mp4"},
    {"webm", "video/webm"},
    {"wmv", "video/x-ms-wmv"},
    {"avi", "video/x-msvideo"},
    {"mpg", "video/mpeg"},
    {"mpeg", "video/mpeg"},
    {"pdf", "application/pdf"},
    {"zip", "application/zip"},
    {"gz", "application/gzip"},
    {"tar", "application/x-tar"},
    {"rar", "application/vnd.rar"},
    {"7z", "application/x-7z-compressed"},
    {"doc", "application/msword"},
    {"xls", "application/vnd.ms-excel"},
    {"ppt", "application/vnd.ms-powerpoint"},
    {"rtf", "application/rtf"},
    {"wasm", "application/wasm"},
};

}  // namespace

std::string_view media_type(std::string_view path) {
  const std::string_view name = path.substr(path.rfind('/') + 1);
  const std::size_t dot = name.rfind('.');
  if (dot != std::string_view::npos) {
    const std::string_view ending = name.substr(dot + 1);
    for (const MediaType& known : kMediaTypes) {
      if (equal_ignoring_case(ending, known.ending)) return known.type;
    }
  }
  return "application/octet-stream";
}

}  // namespace rk::http
