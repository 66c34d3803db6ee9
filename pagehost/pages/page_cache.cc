#include "pagehost/pages/page_cache.h"

#include <algorithm>
#include <utility>

#include "vbscript/syntax_error.h"

namespace rk::pagehost {

CompiledPage compiled_page(std::string path, PageSource source) {
  CompiledPage page;
  page.path = std::move(path);
  page.files = std::move(source.files);
  page.code_page = source.code_page;
  page.session_enabled = source.session_enabled;
  page.lcid = source.lcid;
  page.in_transaction = source.in_transaction;
  page.has_type_library = source.has_type_library;
  page.objects = std::move(source.objects);
  page.left_out = std::move(source.left_out);
  page.failure = std::move(source.failure);
  if (page.failure) return page;
  try {
    page.program = vbscript::compile(source.source);
  } catch (const vbscript::SyntaxError& error) {
    page.failure = PageFailure{error.number(), error.description(), error.path(), error.line(),
                               error.report()};
  }
  return page;
}

bool unchanged(const platform::Files& files, const std::vector<FileState>& states) {
  return std::all_of(states.begin(), states.end(), [&](const FileState& file) {
    return files.stamp(file.physical_path) == file.stamp;
  });
}

std::shared_ptr<const CompiledPage> PageCache::page(std::string_view path) {
  const std::string asked = reader_.site_root() + std::string(path);
  // OPTIMIZATION: a page kept under the very path that is asked for needs no search. The search
  // prefers a file of the exact letter case, so it would find the file whose stamp still holds.
  if (auto exact = kept_at(asked); exact && current(*exact)) return exact;
  const auto found = files_.find(asked);
  if (!found || files_.is_folder(*found)) return nullptr;
  const std::shared_ptr<Entry> entry = entry_at(*found);
  const auto kept = [&] {
    const std::lock_guard lock(mutex_);
    return entry->page;
  };
  std::shared_ptr<const CompiledPage> page = kept();
  if (page && current(*page)) return page;

  const std::lock_guard compiling(entry->compiling);
  page = kept();
  if (page && current(*page)) return page;
  PageSource source = reader_.page(path, code_page_);
  for (const std::string& note : source.notes) log_.note(note);
  auto fresh =
      std::make_shared<const CompiledPage>(compiled_page(std::string(path), std::move(source)));
  const std::lock_guard lock(mutex_);
  entry->page = fresh;
  return fresh;
}

std::shared_ptr<const CompiledPage> PageCache::kept_page(std::string_view path) const {
  const std::string asked = reader_.site_root() + std::string(path);
  // OPTIMIZATION: as for page(): the search prefers the very path that is asked for.
  if (auto exact = kept_at(asked)) return exact;
  const auto found = files_.find(asked);
  return found ? kept_at(*found) : nullptr;
}

std::shared_ptr<const CompiledPage> PageCache::kept_at(const std::string& physical_path) const {
  const std::lock_guard lock(mutex_);
  const auto entry = entries_.find(physical_path);
  return entry == entries_.end() ? nullptr : entry->second->page;
}

std::shared_ptr<PageCache::Entry> PageCache::entry_at(const std::string& physical_path) {
  const std::lock_guard lock(mutex_);
  std::shared_ptr<Entry>& entry = entries_[physical_path];
  if (!entry) entry = std::make_shared<Entry>();
  return entry;
}

}  // namespace rk::pagehost
