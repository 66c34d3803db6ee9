#include "vbscript/err_object.h"

#include <algorithm>
#include <array>

#include "value/conversions.h"
#include "value/text.h"
#include "vbscript/runtime_error.h"

namespace rk::vbscript {

namespace {

enum Member : MemberId { kNumber, kDescription, kSource, kHelpFile, kHelpContext, kRaise, kClear };

constexpr std::int32_t kLastNumber = 0xFFFF;

constexpr std::array<std::string_view, 7> kNames{"Number",      "Description", "Source", "HelpFile",
                                                 "HelpContext", "Raise",       "Clear"};

constexpr std::array kTexts{
    errors::kInvalidCall,
    errors::kOverflow,
    errors::kOutOfMemory,
    errors::kSubscriptOutOfRange,
    errors::kArrayFixed,
    errors::kDivisionByZero,
    errors::kTypeMismatch,
    errors::kOutOfStringSpace,
    KnownError{17, "Can't perform requested operation"},
    errors::kOutOfStack,
    errors::kUndefinedProcedure,
    KnownError{48, "Error in loading DLL"},
    KnownError{51, "Internal error"},
    errors::kBadFileName,
    errors::kFileNotFound,
    errors::kBadFileMode,
    errors::kFileAlreadyOpen,
    errors::kDeviceError,
    errors::kFileExists,
    errors::kDiskFull,
    errors::kInputPastEnd,
    KnownError{67, "Too many files"},
    KnownError{68, "Device unavailable"},
    errors::kPermissionDenied,
    KnownError{71, "Disk not ready"},
    KnownError{74, "Can't rename with different drive"},
    KnownError{75, "Path/File access error"},
    errors::kPathNotFound,
    errors::kObjectNotSet,
    errors::kForLoopNotInitialized,
    KnownError{93, "Invalid pattern string"},
    errors::kInvalidNull,
    KnownError{322, "Can't create necessary temporary file"},
    KnownError{325, "Invalid format in resource file"},
    KnownError{380, "Invalid property value"},
    KnownError{423, "Property or method not found"},
    errors::kObjectRequired,
    errors::kCannotCreateObject,
    KnownError{430, "Class doesn't support Automation"},
    KnownError{432, "File name or class name not found during Automation operation"},
    errors::kNoSuchMember,
    KnownError{440, "Automation error"},
    KnownError{443, "Automation object does not have a default value"},
    errors::kActionNotSupported,
    KnownError{446, "Object doesn't support named arguments"},
    KnownError{447, "Object doesn't support current locale setting"},
    KnownError{448, "Named argument not found"},
    errors::kArgumentNotOptional,
    errors::kWrongArgumentCount,
    errors::kNotACollection,
    KnownError{452, "Invalid ordinal"},
    KnownError{453, "Specified DLL function not found"},
    KnownError{454, "Code resource not found"},
    KnownError{455, "Code resource lock error"},
    errors::kKeyInUse,
    KnownError{458, "Variable uses an Automation type not supported in VBScript"},
    KnownError{461, "Method or data member not found"},
    KnownError{462, "The remote server machine does not exist or is unavailable"},
    KnownError{481, "Invalid picture"},
    errors::kUndefinedVariable,
    errors::kIllegalAssignment,
    KnownError{502, "Object not safe for scripting"},
    KnownError{503, "Object not safe for initializing"},
    KnownError{504, "Object not safe for creating"},
    errors::kUnqualifiedReference,
    errors::kClassNotDefined,
    KnownError{507, "An exception occurred"},
    KnownError{5016, "Regular Expression object expected"},
    KnownError{5017, "Syntax error in regular expression"},
    KnownError{5018, "Unexpected quantifier"},
    KnownError{5019, "Expected ']' in regular expression"},
    KnownError{5020, "Expected ')' in regular expression"},
    KnownError{5021, "Invalid range in character set"},
    errors::kElementNotFound,
};

}  // namespace

std::string_view error_text(std::int32_t number) {
  const auto* at = std::find_if(kTexts.begin(), kTexts.end(),
                                [&](const KnownError& e) { return e.number == number; });
  return at == kTexts.end() ? "Unknown runtime error" : at->text;
}

MemberId ErrObject::member(std::string_view name) const {
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    if (equal_ignoring_case(name, kNames[i])) return static_cast<MemberId>(i);
  }
  return kNoMember;
}

const void* ErrObject::member_table() const {
  return &kNames;
}

Value ErrObject::invoke(MemberId id, CallKind kind, Arguments arguments) {
  if (id == kRaise) raise_error(arguments);
  if (id == kClear) {
    clear();
    return Value();
  }
  if (id < 0 || id > kHelpContext || kind == CallKind::Set) raise(errors::kNoSuchMember);
  const bool assigns = kind == CallKind::Let;
  if (arguments.size() != (assigns ? 1U : 0U)) raise(errors::kWrongArgumentCount);
  if (!assigns) return read(id);
  write(id, *arguments[0]);
  return Value();
}

Value ErrObject::read(MemberId id) const {
  switch (id) {
    case kDescription:
      return Value::text(description_);
    case kSource:
      return Value::text(source_);
    case kHelpFile:
      return Value::text(help_file_);
    case kHelpContext:
      return Value::long_integer(help_context_);
    default:
      return Value::long_integer(number_);
  }
}

void ErrObject::write(MemberId id, const Value& value) {
  switch (id) {
    case kDescription:
      description_ = to_text(value).string();
      break;
    case kSource:
      source_ = to_text(value).string();
      break;
    case kHelpFile:
      help_file_ = to_text(value).string();
      break;
    case kHelpContext:
      help_context_ = to_long(value);
      break;
    default:
      number_ = to_long(value);
  }
}

void ErrObject::raise_error(Arguments arguments) {
  if (arguments.empty() || arguments.size() > 5) raise(errors::kWrongArgumentCount);
  const std::int32_t number = to_long(*arguments[0]);
  // Numbers of the language end at kLastNumber; below zero lie those of components.
  if (number == 0 || number > kLastNumber) raise(errors::kInvalidCall);
  const auto given = [&](std::size_t i) {
    return arguments.size() > i && !arguments[i]->is_missing();
  };
  const std::string source = given(1) ? to_text(*arguments[1]).string() : std::string();
  const std::string description =
      given(2) ? to_text(*arguments[2]).string() : std::string(error_text(number));
  help_file_ = given(3) ? to_text(*arguments[3]).string() : std::string();
  help_context_ = given(4) ? to_long(*arguments[4]) : 0;
  throw ScriptError(number, description, source);
}

void ErrObject::clear() {
  number_ = 0;
  description_.clear();
  source_.clear();
  help_file_.clear();
  help_context_ = 0;
}

void ErrObject::set(const ScriptError& error) {
  number_ = error.number();
  description_ = error.description();
  source_ = error.source().empty() ? std::string(kRuntimeSource) : error.source();
}

}  // namespace rk::vbscript
