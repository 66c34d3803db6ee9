#include "adapters/sqlite/plan.h"

#include <sqlite3.h>

#include <algorithm>

namespace rk::sqlite {
namespace {

// Values of one text whose counts are kept: the classes of a catalogue, the sites of a reseller.
constexpr std::size_t kKeptCounts = 64;
// Statements of one text kept for its next use; more are open at once only in nested walks.
constexpr std::size_t kKeptStatements = 2;

using Source = jetsql::Parameter::Source;

bool all_literals(const jetsql::Translation& translation) {
  return std::all_of(translation.parameters.begin(), translation.parameters.end(),
                     [](const auto& parameter) { return parameter.source == Source::Literal; });
}

bool has_clock(const jetsql::Translation& translation) {
  return std::any_of(
      translation.parameters.begin(), translation.parameters.end(), [](const auto& parameter) {
        return parameter.source != Source::Literal && parameter.source != Source::Caller;
      });
}

}  // namespace

Plan::Plan(jetsql::Translation made)
    : translation(std::move(made)),
      only_literals(all_literals(translation)),
      asks_clock(has_clock(translation)),
      counts(kKeptCounts),
      idle_(translation.reads() ? std::size_t{kForms} : translation.statements.size()) {}

Plan::~Plan() {
  for (const auto& statements : idle_) {
    for (sqlite3_stmt* statement : statements) sqlite3_finalize(statement);
  }
}

std::string Plan::text(std::size_t form) const {
  if (!translation.reads()) return translation.statements[form];
  if (form == kCount) return translation.count_text;
  if (form == kRow) return translation.row_text();
  if (form == kReversed || form == kKeyedReversed) {
    return translation.reversed_text(form == kKeyedReversed);
  }
  return translation.select_text(form == kKeyed || form == kKeyedWindow,
                                 form == kWindow || form == kKeyedWindow);
}

sqlite3_stmt* Plan::take(std::size_t form) {
  auto& statements = idle_[form];
  if (statements.empty()) return nullptr;
  sqlite3_stmt* statement = statements.back();
  statements.pop_back();
  return statement;
}

void Plan::give_back(std::size_t form, sqlite3_stmt* statement) {
  if (idle_[form].size() < kKeptStatements) {
    idle_[form].push_back(statement);
  } else {
    sqlite3_finalize(statement);
  }
}

void Plan::keep_count(std::string key, KeptCount count) {
  if (KeptCount* known = counts.find(key)) {
    *known = count;
  } else {
    counts.put(std::move(key), count);
  }
}

void Lease::release() noexcept {
  if (statement_ == nullptr) return;
  sqlite3_reset(statement_);
  plan_->give_back(form_, std::exchange(statement_, nullptr));
  plan_ = nullptr;
}

}  // namespace rk::sqlite
