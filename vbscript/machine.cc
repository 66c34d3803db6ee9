#include "vbscript/machine.h"

#include <new>

#include "platform/page.h"
#include "value/conversions.h"
#include "vbscript/names.h"
#include "vbscript/runtime_error.h"

namespace rk::vbscript {

namespace {

// What GetLocale answers until SetLocale: English (United States), or the Chinese of the
// storefronts where Asc and Chr are Chinese.
constexpr std::int32_t kEnglish = 1033;
constexpr std::int32_t kChinese = 2052;
constexpr int kChineseCodePage = 936;

// Objects that end inside the end of others; deeper ones wait until those are done, so that a long
// list of objects ends without a deep stack.
constexpr int kMaxNestedBurials = 32;

// In defined_: an object of the host.
constexpr char kFromHost = 2;

}  // namespace

Machine::Machine(std::shared_ptr<const Unit> unit, Host& host)
    : host_(host),
      err_(make_ref<ErrObject>()),
      locale_(host.services().ansi_code_page == kChineseCodePage ? kChinese : kEnglish) {
  main_.unit = std::move(unit);
  const Unit& u = *main_.unit;
  main_.sites.resize(u.call_sites);
  globals_.resize(u.globals.size());
  defined_.resize(u.globals.size());
  for (std::size_t i = 0; i < u.globals.size(); ++i) {
    const Global& global = u.globals[i];
    defined_[i] = global.defined;
    if (!global.ask_host) continue;
    if (std::optional<Value> known = host.lookup(global.text)) {
      globals_[i] = std::move(*known);
      defined_[i] = kFromHost;
    }
  }
  procedures_.reserve(u.codes.size());
  for (const auto& code : u.codes) procedures_.push_back({code.get(), &main_});
  stack_floor_ = host.services().stack_floor;
  if (stack_floor_ == 0) stack_floor_ = stack_floor_of_this_thread();
}

Machine::~Machine() {
  try {
    finish();
  } catch (const platform::PageEnd&) {
    // The page is over in any case.
  }
  *self_ = nullptr;
}

void Machine::run() {
  call({main_.unit->codes[0].get(), &main_}, nullptr, {}, nullptr);
}

bool Machine::defines(std::string_view procedure) {
  return find_procedure(folded_name(procedure)) != nullptr;
}

Value Machine::call_named(std::string_view procedure, Arguments arguments) {
  const ProcedureRef* found = find_procedure(folded_name(procedure));
  if (found == nullptr) raise_about(errors::kTypeMismatch, procedure);
  Value result;
  call(*found, nullptr, arguments, &result);
  return result;
}

// Variables first, in the order of their declaration; then what only holds itself alive. What the
// host gave goes last: Class_Terminate may still write to the response.
void Machine::finish() {
  for (std::size_t i = 0; i < globals_.size(); ++i) {
    if (defined_[i] != kFromHost) globals_[i] = Value();
  }
  made_variables_.clear();
  while (objects != nullptr) {
    const Ref<ScriptObject> object(objects);
    if (!object->terminated_) {
      object->terminated_ = true;
      terminate(*object);
    }
    // Not the newest any more where Class_Terminate made new ones.
    if (object->newer_ != nullptr) {
      object->newer_->older_ = object->older_;
    } else {
      objects = object->older_;
    }
    if (object->older_ != nullptr) object->older_->newer_ = object->newer_;
    object->older_ = object->newer_ = nullptr;
    object->abandon();
  }
  for (Value& global : globals_) global = Value();
  if (page_end_) std::rethrow_exception(std::exchange(page_end_, nullptr));
}

SourcePlace Machine::place() const {
  for (const Frame* frame = frame_; frame != nullptr; frame = frame->caller) {
    if (frame->unit != &main_) continue;
    const auto at = static_cast<std::uint32_t>(frame->at - frame->code->instructions.data());
    SourcePlace place;
    for (const Mark& mark : frame->code->marks) {
      if (mark.first > at) break;
      place = mark.place;
    }
    return place;
  }
  return last_place_;
}

void Machine::rethrow(const ScriptError& error) {
  const SourcePlace place = error_placed_ ? error_place_ : last_place_;
  const auto& files = main_.unit->files;
  const auto file = static_cast<std::size_t>(place.file);
  error_placed_ = false;
  throw RuntimeError(
      ScriptError(error.number(), error.description(),
                  error.source().empty() ? std::string(kRuntimeSource) : error.source()),
      file < files.size() ? files[file] : std::string(), place.line,
      std::exchange(error_name_, std::string()));
}

void Machine::raise_about(const KnownError& error, std::string_view name) {
  error_name_ = name;
  raise(error);
}

void Machine::raise_number(std::int32_t number, std::string_view name) {
  error_name_ = name;
  throw ScriptError(number, std::string(error_text(number)));
}

std::optional<Value> Machine::plain_or_none(const Value& value) {
  if (!value.is_object()) return value;
  if (value.as_object() == nullptr) return std::nullopt;
  const bool placed = error_placed_;
  try {
    return plain_value(value);
  } catch (const ScriptError& error) {
    const bool has_none = error.number() == errors::kNoSuchMember.number ||
                          error.number() == errors::kWrongArgumentCount.number;
    if (!has_none) throw;
    error_placed_ = placed;
    error_name_.clear();
    return std::nullopt;
  }
}

void Machine::look_at_time() {
  turns_left_ = kTurnsBetweenTimeChecks;
  if (page_end_) std::rethrow_exception(std::exchange(page_end_, nullptr));
  host_.check_time();
  charge(kBytesOfTurn * kTurnsBetweenTimeChecks);
}

// --- objects of script classes -----------------------------------------------------------------

void Machine::initialize(ScriptObject& object) {
  const int index = object.code().initialize;
  if (index < 0) return;
  LoadedUnit& unit = object.unit();
  call({unit.unit->codes[static_cast<std::size_t>(index)].get(), &unit}, &object, {}, nullptr);
}

// Errors in Class_Terminate go unseen, as in the language; the end of the page is kept for the
// next turn.
void Machine::terminate(ScriptObject& object) noexcept {
  const int index = object.code().terminate;
  if (index < 0) return;
  const bool placed = error_placed_;
  const SourcePlace place = error_place_;
  std::string name = std::move(error_name_);
  try {
    LoadedUnit& unit = object.unit();
    call({unit.unit->codes[static_cast<std::size_t>(index)].get(), &unit}, &object, {}, nullptr);
  } catch (const platform::PageEnd&) {
    page_end_ = std::current_exception();
    turns_left_ = 0;
  } catch (const std::exception&) {
    // A failing end of an object is no failure of the statement that let it go.
  }
  error_placed_ = placed;
  error_place_ = place;
  error_name_ = std::move(name);
}

void Machine::bury(ScriptObject& object) noexcept {
  dying_.push_back(&object);
  if (burials_ >= kMaxNestedBurials) return;
  ++burials_;
  while (!dying_.empty()) {
    ScriptObject* const next = dying_.back();
    dying_.pop_back();
    if (next->terminated_) {
      delete next;
      continue;
    }
    next->terminated_ = true;
    const Ref<ScriptObject> kept(next);
    terminate(*next);
  }
  --burials_;
}

}  // namespace rk::vbscript
