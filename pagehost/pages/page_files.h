// PageFiles: the site's files as pages may touch them: without the files that a database engine
// keeps beside an open database. A page that reads or removes one of those, by a path that a
// visitor made up, would lose what was written; to pages they are not there. What pages make has a
// name that every system takes.
//
// Several threads may call, as on the files beneath.
#ifndef RK_PAGEHOST_PAGES_PAGE_FILES_H_
#define RK_PAGEHOST_PAGES_PAGE_FILES_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace rk::pagehost {

class PageFiles final : public platform::Files {
 public:
  explicit PageFiles(platform::Files& files) : files_(files) {}

  std::optional<std::string> find(std::string_view path) const override;
  std::optional<platform::FileStamp> stamp(std::string_view path) const override;
  bool is_folder(std::string_view path) const override;
  std::vector<std::string> names(std::string_view folder) const override;
  std::string read(std::string_view path) const override;
  std::string read_text(std::string_view path) const override;
  void write(std::string_view path, std::string_view bytes) override;
  void append(std::string_view path, std::string_view bytes) override;
  void remove(std::string_view path) override;
  void remove_folder(std::string_view path) override;
  void make_folder(std::string_view path) override;
  void rename(std::string_view from, std::string_view to) override;

 private:
  bool is_hidden(std::string_view path) const;
  bool is_hidden_name(std::string_view folder, std::string_view name) const;
  void must_be_shown(std::string_view path) const;  // else 53
  void must_be_free(std::string_view path) const;   // else 70, or 52

  platform::Files& files_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_PAGE_FILES_H_
