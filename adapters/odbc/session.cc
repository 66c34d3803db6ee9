#include "adapters/odbc/session.h"

#include <algorithm>
#include <utility>

#include "adapters/odbc/engine.h"
#include "adapters/odbc/rowset.h"
#include "value/script_error.h"

namespace rk::odbc {
namespace {

constexpr KnownError kNoTransaction{-2147168242, "No transaction is active.",
                                    errors::kDatabaseSource};
constexpr KnownError kOneTransaction{
    -2147168237, "Only one transaction can be active on this session.", errors::kDatabaseSource};

}  // namespace

Session::Session(Engine& engine, std::shared_ptr<const PageHooks> hooks,
                 std::string connection_string)
    : engine_(engine),
      hooks_(std::move(hooks)),
      connection_string_(std::move(connection_string)),
      catalogue_(engine.catalogue(connection_string_)) {}

Session::~Session() = default;

void Session::attach() {
  if (link_ == nullptr) link_ = engine_.borrow(connection_string_);
  ++attached_;
}

void Session::detach() noexcept {
  if (--attached_ > 0) return;
  undo();
  engine_.give_back(std::move(link_));
}

std::unique_ptr<Statement> Session::statement() {
  if (link_->reads_one_at_a_time()) settle_sets();
  return std::make_unique<Statement>(*link_, *hooks_);
}

// Record sets read on from memory: the end of a transaction may close what the driver reads from.
void Session::begin_transaction() {
  if (in_transaction_) raise(kOneTransaction);
  settle_sets();
  link_->begin();
  in_transaction_ = true;
}

void Session::check_transaction() const {
  if (!in_transaction_) raise(kNoTransaction);
}

void Session::commit_transaction() {
  check_transaction();
  settle_sets();
  try {
    link_->commit();
  } catch (const ScriptError&) {  // passed on, and nothing of it is kept
    undo();
    throw;
  }
  in_transaction_ = false;
}

void Session::roll_back_transaction() {
  check_transaction();
  settle_sets();
  undo();
}

void Session::undo() noexcept {
  if (std::exchange(in_transaction_, false)) link_->roll_back();
}

void Session::remove(Rowset& set) noexcept {
  // The newest ones go first, as a rule.
  const auto found = std::find(sets_.rbegin(), sets_.rend(), &set);
  if (found != sets_.rend()) sets_.erase(std::next(found).base());
}

void Session::settle_sets() {
  for (Rowset* set : sets_) set->settle();
}

void Session::close_sets_of(const void* owner) noexcept {
  const std::vector<Rowset*> open = sets_;
  for (Rowset* set : open) {
    if (set->owner() == owner) set->shut();
  }
}

}  // namespace rk::odbc
