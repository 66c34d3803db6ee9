#include "app/program.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cstdio>
#include <exception>
#include <iostream>
#include <limits>

#include "adapters/posix/kept_memory.h"
#include "app/commands.h"

namespace rk::app {
namespace {

struct CommandLine {
  CLI::App program{"Serves storefronts written as classic .asp pages.", "rkclient"};
  ServeOptions serve;
  RunOptions run;
  std::string schema_engine = "sqlite";
  std::string new_folder;
  std::string check_site = ".";

  explicit CommandLine(const std::string& version) {
    program.set_version_flag("--version", "rkclient " + version);
    program.require_subcommand(1);
    serve.version = version;
    run.version = version;
    add_serve();
    add_run();
    add_others();
  }

 private:
  void add_serve() {
    CLI::App* command = program.add_subcommand("serve", "Serve a site folder over HTTP");
    command->add_option("SITE", serve.site, "The site folder")->capture_default_str();
    command->add_option("--listen", serve.listen, "ADDRESS:PORT to serve at, over the setting");
  }

  void add_run() {
    CLI::App* command = program.add_subcommand("run", "Run one page and print its answer");
    command->add_option("PAGE", run.page, "Virtual path of the page, such as /index.asp")
        ->required();
    command->add_option("--site", run.site, "The site folder")->capture_default_str();
    command->add_option("--host", run.host, "The request's Host")->capture_default_str();
    command->add_option("--query", run.query, "The query string, without \"?\"");
    command->add_option("--method", run.method, "GET or POST (default: GET, POST with a form)")
        ->check(CLI::IsMember({"GET", "POST"}));
    command->add_option("--form", run.form, "The form, url-encoded; implies POST");
    command->add_option("--header", run.headers, "A request header, 'Name: value'; repeatable")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    command->add_flag("--include-headers", run.include_headers,
                      "Print the status line and headers first");
    command->add_flag("--trace", run.trace,
                      "Write each SQL text with its microseconds, rows and place");
    command->add_option("--repeat", run.repeat, "Run the page N times and write the times")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()));
  }

  void add_others() {
    CLI::App* schema = program.add_subcommand("schema", "Print the storefront database's DDL");
    schema->add_option("--engine", schema_engine, "Whose SQL to print")
        ->check(CLI::IsMember({"sqlite", "postgresql", "mariadb", "sqlserver"}))
        ->capture_default_str();
    CLI::App* start = program.add_subcommand("new", "Write a storefront to start from");
    start->add_option("DIR", new_folder, "An empty folder, or one to be made")->required();
    CLI::App* check = program.add_subcommand("check", "Report what of a site would fail");
    check->add_option("SITE", check_site, "The site folder")->capture_default_str();
  }
};

int carry_out(const CommandLine& line) {
  if (line.program.got_subcommand("serve")) return serve(line.serve);
  if (line.program.got_subcommand("run")) return run(line.run);
  if (line.program.got_subcommand("schema")) return print_schema(line.schema_engine);
  if (line.program.got_subcommand("new")) return new_site(line.new_folder);
  return check(line.check_site);
}

int fail(int code, const char* reason) {
  std::fprintf(stderr, "rkclient: %s\n", reason);
  return code;
}

}  // namespace

void print(std::string_view text) {
  const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (!written || std::fflush(stdout) != 0) throw CommandFailure("cannot write standard output");
}

int run_program(int argc, char** argv, const std::string& version) {
  posix::keep_freed_memory();
  CommandLine line(version);
  try {
    line.program.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    // Help and version come as errors of their own, which print and mean success.
    return line.program.exit(error) == 0 ? kDone : kWrongCommandLine;
  }
  try {
    return carry_out(line);
  } catch (const WrongCommandLine& error) {
    return fail(kWrongCommandLine, error.what());
  } catch (const std::exception& error) {
    return fail(kFailed, error.what());
  }
}

}  // namespace rk::app
