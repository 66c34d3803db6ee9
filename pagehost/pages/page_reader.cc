#include "pagehost/pages/page_reader.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <utility>

#include "pagehost/pages/page_splitter.h"
#include "pagehost/pages/url_text.h"
#include "pagehost/pages/virtual_path.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

using vbscript::SourcePiece;

constexpr std::int32_t kPageFailure = errors::kSqlFailure;  // 80004005, "unspecified"

bool is_page_language(std::string_view language) {
  return language.empty() || equal_ignoring_case(language, "vbscript") ||
         equal_ignoring_case(language, "vbs");
}

// "%\>" is how a script writes "%>".
std::string script_text(std::string_view text) {
  std::string out(text);
  for (auto at = out.find("%\\>"); at != std::string::npos; at = out.find("%\\>", at + 2)) {
    out.erase(at + 1, 1);
  }
  return out;
}

// The content of a block, without the HTML comment that hides it from old browsers.
std::string block_text(std::string_view text) {
  std::string out(text);
  const auto first = out.find_first_not_of(" \t\r\n");
  if (first == std::string::npos || out.compare(first, 4, "<!--") != 0) return out;
  out.replace(first, 4, "    ");
  const auto last = out.rfind("-->");
  if (last != std::string::npos) out.replace(last, 3, "   ");
  return out;
}

bool is_name_character(char c) {
  return c == '_' || (c >= '0' && c <= '9') || (ascii_lower(c) >= 'a' && ascii_lower(c) <= 'z');
}

// The names behind each word "function" of a block in another language.
void add_function_names(std::string_view text, std::vector<std::string>& out) {
  constexpr std::string_view kWord = "function";
  for (auto at = text.find(kWord); at != std::string_view::npos; at = text.find(kWord, at + 1)) {
    const auto from = text.find_first_not_of(" \t\r\n", at + kWord.size());
    if (from == std::string_view::npos || from == at + kWord.size()) continue;
    auto end = from;
    while (end < text.size() && is_name_character(text[end])) ++end;
    if (end > from) out.push_back(lowered_ascii(text.substr(from, end - from)));
  }
}

int line_of(std::string_view bytes, std::size_t offset) {
  return 1 + static_cast<int>(
                 std::count(bytes.begin(), bytes.begin() + static_cast<long>(offset), '\n'));
}

// One reading, with the files that are open inside one another.
class Reading {
 public:
  Reading(const platform::Files& files, const platform::CodePages& code_pages,
          const std::string& site_root, int code_page)
      : files_(files), code_pages_(code_pages), site_root_(site_root), code_page_(code_page) {}

  PageSource whole(std::string_view path, bool keep_page_text) {
    keep_page_text_ = keep_page_text;
    if (!read_file(path)) fail(path, 0, "File not found");
    // Blocks run behind the script between marks, whatever their place.
    for (SourcePiece& piece : blocks_) out_.source.pieces.push_back(std::move(piece));
    return std::move(out_);
  }

 private:
  // False where there is no such file.
  bool read_file(std::string_view path) {
    const std::string physical = site_root_ + std::string(path);
    const auto stamp = files_.stamp(physical);
    out_.files.push_back({physical, stamp});
    if (!stamp || files_.is_folder(physical)) return false;
    const std::string key = files_.find(physical).value_or(physical);
    const std::string text = decoded(path, files_.read(physical));
    open_.push_back(key);
    const int file = file_number(path);
    for (const PagePart& part : split_page(text)) add(part, std::string(path), file);
    open_.pop_back();
    return true;
  }

  std::string decoded(std::string_view path, std::string bytes) {
    if (open_.empty()) {
      out_.code_page = code_page_directive(bytes);
      if (out_.code_page != 0 && out_.code_page != platform::kUtf8 &&
          !code_pages_.supports(out_.code_page)) {
        fail(path, 1, "Invalid CodePage value: " + std::to_string(out_.code_page));
        out_.code_page = 0;
      }
      if (out_.code_page != 0) code_page_ = out_.code_page;
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) return bytes.substr(3);
    if (bytes.starts_with("\xFF\xFE")) return Text::from_bytes(bytes.substr(2)).string();
    if (is_ascii(bytes) || (code_page_ == platform::kUtf8 && is_valid_utf8(bytes))) return bytes;
    std::optional<std::size_t> first_bad;
    std::string text = code_pages_.to_utf8(bytes, code_page_, &first_bad);
    if (first_bad) {
      out_.notes.push_back(std::string(path) + ":" + std::to_string(line_of(bytes, *first_bad)) +
                           ": bytes that code page " + std::to_string(code_page_) +
                           " does not have");
    }
    return text;
  }

  int file_number(std::string_view path) {
    out_.source.files.emplace_back(path);
    return static_cast<int>(out_.source.files.size()) - 1;
  }

  void add(const PagePart& part, const std::string& path, int file) {
    switch (part.kind) {
      case PagePart::Kind::Literal:
        if (keep_page_text_)
          add_piece(SourcePiece::Kind::Literal, std::string(part.text), part, file);
        break;
      case PagePart::Kind::Script:
        add_piece(SourcePiece::Kind::Script, script_text(part.text), part, file);
        break;
      case PagePart::Kind::Expression:
        add_piece(SourcePiece::Kind::Expression, script_text(part.text), part, file);
        break;
      case PagePart::Kind::Directive:
        directive(part, path);
        break;
      case PagePart::Kind::IncludeFile:
        include(part, path, folder_of(path));
        break;
      case PagePart::Kind::IncludeVirtual:
        include(part, path, "");
        break;
      case PagePart::Kind::ScriptBlock:
        block(part, path, file);
        break;
      case PagePart::Kind::ObjectDeclaration:
        declaration(part, path);
        break;
      case PagePart::Kind::TypeLibrary:
        out_.has_type_library = true;
        break;
      case PagePart::Kind::Unclosed:
        fail(path, part.line, std::string(part.text) + " without its end");
        break;
    }
  }

  void add_piece(SourcePiece::Kind kind, std::string text, const PagePart& part, int file) {
    out_.source.pieces.push_back({kind, std::move(text), file, part.line, part.column});
  }

  // One for the page with its includes: of two it would not be clear which one rules.
  void directive(const PagePart& part, const std::string& path) {
    if (std::exchange(has_directive_, true)) fail(path, part.line, "A second <%@ directive");
    const std::string_view language = attribute(part.attributes, "language");
    if (!is_page_language(language)) {
      fail(path, part.line, "The language of this page is not served: " + std::string(language));
    }
    if (equal_ignoring_case(attribute(part.attributes, "enablesessionstate"), "false")) {
      out_.session_enabled = false;
    }
    const std::string_view lcid = attribute(part.attributes, "lcid");
    std::from_chars(lcid.data(), lcid.data() + lcid.size(), out_.lcid);
    transaction(attribute(part.attributes, "transaction"), part, path);
  }

  void transaction(std::string_view word, const PagePart& part, const std::string& path) {
    const auto is_one_of = [&](std::initializer_list<std::string_view> words) {
      return std::any_of(words.begin(), words.end(),
                         [&](std::string_view each) { return equal_ignoring_case(word, each); });
    };
    if (is_one_of({"required", "requires_new"})) {
      out_.in_transaction = true;
    } else if (!is_one_of({"", "supported", "not_supported", "disabled"})) {
      fail(path, part.line, "No word for a transaction: " + std::string(word));
    }
  }

  void include(const PagePart& part, const std::string& path, std::string_view folder) {
    if (part.text.empty()) return fail(path, part.line, "#include names no file");
    const auto target = resolved_path(folder, part.text);
    if (!target) {
      return fail(path, part.line,
                  "The include file leads out of the site: '" + std::string(part.text) + "'");
    }
    const std::string physical = site_root_ + *target;
    const auto open =
        std::find(open_.begin(), open_.end(), files_.find(physical).value_or(physical));
    if (open != open_.end()) {
      return fail(path, part.line, "The file includes itself: '" + std::string(part.text) + "'");
    }
    if (open_.size() >= kMaxIncludeDepth || out_.files.size() >= kMaxIncludes) {
      return fail(path, part.line, "Too many include files");
    }
    if (!read_file(*target)) {
      fail(path, part.line, "The include file was not found: '" + std::string(part.text) + "'");
    }
  }

  void block(const PagePart& part, const std::string& path, int file) {
    if (!is_page_language(attribute(part.attributes, "language"))) {
      add_function_names(part.text, out_.left_out);
      return;
    }
    const std::string_view from = attribute(part.attributes, "src");
    if (!from.empty()) return block_file(from, part, path);
    block_pieces(part.text, path, file, part.line, part.column);
  }

  void block_pieces(std::string_view text, const std::string& path, int file, int line,
                    int column) {
    while (const auto found = first_include(text)) {
      blocks_.push_back({SourcePiece::Kind::Script, std::string(text.substr(0, found->from)), file,
                         line, column});
      line += line_of(text, found->from) - 1;
      block_include(found->part, path, line);
      line += line_of(text.substr(found->from), found->past - found->from) - 1;
      text.remove_prefix(found->past);
      column = 1;
    }
    blocks_.push_back({SourcePiece::Kind::Script, block_text(text), file, line, column});
  }

  // An include in a block: a file that is all script.
  void block_include(const PagePart& part, const std::string& path, int line) {
    const bool is_virtual = part.kind == PagePart::Kind::IncludeVirtual;
    const auto target = part.text.empty()
                            ? std::nullopt
                            : resolved_path(is_virtual ? "" : folder_of(path), part.text);
    const std::string physical = site_root_ + target.value_or("");
    const std::string on_disk = files_.find(physical).value_or(physical);
    if (std::find(open_.begin(), open_.end(), on_disk) != open_.end()) {
      return fail(path, line, "The file includes itself: '" + std::string(part.text) + "'");
    }
    if (open_.size() >= kMaxIncludeDepth || out_.files.size() >= kMaxIncludes) {
      return fail(path, line, "Too many include files");
    }
    const auto stamp = target ? files_.stamp(physical) : std::nullopt;
    if (target) out_.files.push_back({physical, stamp});
    if (!stamp || files_.is_folder(physical)) {
      return fail(path, line, "The include file was not found: '" + std::string(part.text) + "'");
    }
    open_.push_back(on_disk);
    const std::string text = decoded(*target, files_.read(physical));
    block_pieces(text, *target, file_number(*target), 1, 1);
    open_.pop_back();
  }

  // <script runat="Server" src="...">: a file that is all script.
  void block_file(std::string_view from, const PagePart& part, const std::string& path) {
    const auto target = resolved_path(folder_of(path), from);
    const std::string physical = site_root_ + target.value_or("");
    const auto stamp = target ? files_.stamp(physical) : std::nullopt;
    out_.files.push_back({physical, stamp});
    if (!stamp || files_.is_folder(physical)) {
      return fail(path, part.line, "The script file was not found: '" + std::string(from) + "'");
    }
    open_.push_back(physical);  // its code page is the page's
    std::string text = decoded(*target, files_.read(physical));
    open_.pop_back();
    blocks_.push_back({SourcePiece::Kind::Script, std::move(text), file_number(*target), 1, 1});
  }

  void declaration(const PagePart& part, const std::string& path) {
    ObjectDeclaration object;
    object.id = attribute(part.attributes, "id");
    object.program_identifier = attribute(part.attributes, "progid");
    const std::string_view scope = attribute(part.attributes, "scope");
    if (equal_ignoring_case(scope, "session")) object.scope = ObjectDeclaration::Scope::Session;
    if (equal_ignoring_case(scope, "application")) {
      object.scope = ObjectDeclaration::Scope::Application;
    }
    if (object.id.empty()) return fail(path, part.line, "An <object> declaration has no id");
    if (object.program_identifier.empty()) {
      object.program_identifier = attribute(part.attributes, "classid");
    }
    out_.objects.push_back(std::move(object));
  }

  // The first failure stands.
  void fail(std::string_view path, int line, std::string text) {
    if (out_.failure) return;
    std::string report = std::string(path);
    if (line > 0) report += ":" + std::to_string(line);
    report += ": " + text;
    out_.failure = PageFailure{kPageFailure, std::move(text), std::string(path), line, report};
  }

  const platform::Files& files_;
  const platform::CodePages& code_pages_;
  const std::string& site_root_;
  int code_page_;
  bool keep_page_text_ = true;
  bool has_directive_ = false;
  PageSource out_;
  std::vector<std::string> open_;  // the files being read, as they lie on the disk
  std::vector<SourcePiece> blocks_;
};

}  // namespace

PageSource PageReader::page(std::string_view path, int code_page) const {
  return Reading(files_, code_pages_, site_root_, code_page).whole(path, true);
}

PageSource PageReader::start_up_script(std::string_view path, int code_page) const {
  return Reading(files_, code_pages_, site_root_, code_page).whole(path, false);
}

}  // namespace rk::pagehost
