#include <algorithm>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "app/commands.h"
#include "app/page_features.h"
#include "app/program.h"
#include "app/schema.h"
#include "app/settings.h"
#include "app/site.h"
#include "app/template_check.h"
#include "pagehost/http/page_pool.h"
#include "pagehost/pages/page_cache.h"
#include "pagehost/pages/page_reader.h"
#include "value/conversions.h"
#include "value/script_error.h"
#include "value/text.h"
#include "vbscript/limits.h"

namespace rk::app {
namespace {

constexpr std::string_view kStartUpScript = "/global.asa";
constexpr std::string_view kConnectionName = "Rk_ConnStr";
constexpr std::string_view kStorefrontClass = "Rkclient.SiteMain";
constexpr std::string_view kTemplates = "/Template";
// Folders inside one another; a link that leads round in the site ends here.
constexpr int kMaxFolderDepth = 32;

// What is found wrong: "FILE:LINE: message", each once, in the order of finding.
class Findings final : public pagehost::Log {
 public:
  void add(const std::string& finding) {
    if (seen_.insert(finding).second) findings_.push_back(finding);
  }
  void error(std::string_view event) override {
    // A report's further lines show the place, which its first line names.
    add(std::string(event.substr(0, event.find('\n'))));
  }
  void note(std::string_view) override {}

  const std::vector<std::string>& all() const { return findings_; }

 private:
  std::set<std::string> seen_;
  std::vector<std::string> findings_;
};

void collect_pages(const platform::Files& files, const std::string& folder,
                   const std::string& virtual_folder, int depth, std::vector<std::string>& pages) {
  if (depth > kMaxFolderDepth) return;
  for (const std::string& name : files.names(folder)) {
    if (name.front() == '.') continue;
    const std::string physical = folder + "/" + name;
    const std::string path = virtual_folder + "/" + name;
    if (files.is_folder(physical)) {
      collect_pages(files, physical, path, depth + 1, pages);
    } else if (pagehost::PageHost::is_page(path)) {
      pages.push_back(path);
    }
  }
}

// The pages of a site, one after the other; collects what they ask of the templates.
class PagesCheck {
 public:
  PagesCheck(Site& site, pagehost::PageServices& page, Findings& findings)
      : site_(site),
        reader_(site.files(), site.code_pages(), site.folder()),
        features_(site.programs(), page),
        findings_(findings) {}

  void check(const std::string& path) {
    const pagehost::PageSource source = reader_.page(path, site_.pages().code_page());
    for (const std::string& note : source.notes) findings_.add(note);
    const pagehost::CompiledPage page = pagehost::compiled_page(path, source);
    if (page.failure) {
      findings_.add(page.failure->path + ":" + std::to_string(page.failure->line) + ": " +
                    page.failure->text);
      return;
    }
    for (const std::string& fault : features_.faults(source)) findings_.add(fault);
    uses_library_ = uses_library_ || features_.creates(source, kStorefrontClass);
    for (RendererCall& call : PageFeatures::renderer_calls(source)) {
      calls_[lowered_ascii(call.operation)].push_back(std::move(call));
    }
  }
  // Sites that have a database of their own and none of the library's classes are whole too.
  bool use_the_library() const { return uses_library_; }
  // The calls of a renderer, in any letter case.
  std::span<const RendererCall> calls(std::string_view operation) const {
    const auto at = calls_.find(lowered_ascii(operation));
    if (at == calls_.end()) return {};
    return at->second;
  }

 private:
  Site& site_;
  pagehost::PageReader reader_;
  PageFeatures features_;
  Findings& findings_;
  bool uses_library_ = false;
  std::map<std::string, std::vector<RendererCall>> calls_;  // by lower-case name
};

// A file of a template folder; `folder` is virtual.
void check_template_file(const Site& site, const std::string& folder,
                         const site::TemplateFile& file, std::span<const RendererCall> calls,
                         Findings& findings) {
  const std::string path = folder + "/" + std::string(file.name);
  const auto physical = site.files().find(site.folder() + path);
  if (!physical) {
    if (calls.empty()) return;
    findings.add(path + ":1: there is no such file; " + std::string(file.operation) + " at " +
                 calls.front().place + " fills it");
    return;
  }
  const std::string text = site.files().read_text(*physical);
  check_template(text, file, [&](std::size_t line, const std::string& message) {
    findings.add(path + ":" + std::to_string(line) + ": " + message);
  });
  for (const RendererCall& call : calls) {
    if (!call.style) continue;
    const std::string missing = missing_style(text, file, *call.style);
    if (missing.empty()) continue;
    findings.add(path + ":1: the marker " + missing + " is missing; the page at " + call.place +
                 " asks for this style");
  }
}

void check_templates(const Site& site, const PagesCheck& pages, Findings& findings) {
  const auto templates = site.files().find(site.folder() + std::string(kTemplates));
  if (!templates || !site.files().is_folder(*templates)) return;
  for (const std::string& name : site.files().names(*templates)) {
    if (name.front() == '.' || !site.files().is_folder(*templates + "/" + name)) continue;
    const std::string folder = std::string(kTemplates) + "/" + name;
    for (const site::TemplateFile& file : site::template_files()) {
      check_template_file(site, folder, file, pages.calls(file.operation), findings);
    }
  }
}

// The line of the start-up script that names the connection string, for what the database lacks.
int connection_line(const platform::Files& files, const std::string& script) {
  if (!files.find(script)) return 1;
  const std::string text = lowered_ascii(files.read(script));
  const std::size_t at = text.find(lowered_ascii(kConnectionName));
  if (at == std::string::npos) return 1;
  const auto end = text.begin() + static_cast<std::ptrdiff_t>(at);
  return 1 + static_cast<int>(std::count(text.begin(), end, '\n'));
}

std::vector<std::string> missing_columns(platform::Recordset& rows, const SchemaTable& table) {
  std::vector<std::string> missing;
  for (const SchemaColumn& column : table.columns) {
    bool there = false;
    for (std::size_t i = 0; i < rows.field_count(); ++i) {
      there = there || equal_ignoring_case(rows.field_name(i), column.name);
    }
    if (!there) missing.emplace_back(column.name);
  }
  return missing;
}

void check_table(platform::Connection& connection, const SchemaTable& table,
                 const std::string& place, Findings& findings) {
  const std::string name(table.name);
  try {
    const auto rows =
        connection.open_recordset("Select Top 1 * From [" + name + "]",
                                  platform::CursorType::ForwardOnly, platform::LockType::ReadOnly);
    for (const std::string& column : missing_columns(*rows, table)) {
      findings.add(place + "the database's table " + name + " lacks the column " + column);
    }
  } catch (const ScriptError& error) {
    const bool missing = error.number() == errors::kSqlMissingTable;
    findings.add(place + (missing ? "the database lacks the table " + name : error.description()));
  }
}

void check_database(Site& site, Findings& findings) {
  const std::string script = site.folder() + std::string(kStartUpScript);
  const std::string place = std::string(kStartUpScript) + ":" +
                            std::to_string(connection_line(site.files(), script)) + ": ";
  const Text connection_string = joined_text(site.pages().application_value(kConnectionName));
  if (connection_string.empty()) {
    findings.add(place + "Application_OnStart sets no Application(\"Rk_ConnStr\")");
    return;
  }
  const std::shared_ptr<platform::Database> database = site.database();
  const std::unique_ptr<platform::Connection> connection = database->connection();
  try {
    connection->open(connection_string.view());
  } catch (const ScriptError& error) {
    findings.add(place + error.description());
    return;
  }
  for (const SchemaTable& table : schema_tables()) {
    check_table(*connection, table, place, findings);
  }
}

void check_site(const std::string& folder, const Settings& settings, Findings& findings) {
  SiteOptions options;
  options.folder = folder;
  options.settings = settings;
  Site site(std::move(options), findings);
  site.pages().start();
  std::vector<std::string> paths;
  collect_pages(site.files(), folder, "", 0, paths);
  site.pages().with_page([&](pagehost::PageServices& page) {
    PagesCheck pages(site, page, findings);
    for (const std::string& path : paths) pages.check(path);
    check_templates(site, pages, findings);
    if (pages.use_the_library()) check_database(site, findings);
  });
  site.pages().leave();
}

}  // namespace

int check(const std::string& site) {
  const std::string folder = site_folder(site);
  Findings findings;
  try {
    const Settings settings = load_settings(folder);
    http::run_on_page_thread(vbscript::kPageThreadStackBytes,
                             [&] { check_site(folder, settings, findings); });
  } catch (const SettingsError& error) {
    findings.add(error.what());
  }
  std::string report;
  for (const std::string& finding : findings.all()) report.append(finding).append("\n");
  print(report);
  return findings.all().empty() ? kDone : kFailed;
}

}  // namespace rk::app
