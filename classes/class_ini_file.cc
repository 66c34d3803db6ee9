#include "classes/class_ini_file.h"

#include <array>

#include "value/conversions.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk::classes {

namespace {

constexpr std::array kOperations{
    operation<&ClassIniFile::WriteIniKey>("WriteIniKey"),
    operation<&ClassIniFile::GetIniKey>("GetIniKey"),
    operation<&ClassIniFile::DelIniKey>("DelIniKey"),
    operation<&ClassIniFile::DelIniSec>("DelIniSec"),
};

// Behind the numbers of the operations.
constexpr MemberId kFileName = kDefaultMember + 1 + static_cast<MemberId>(kOperations.size());

}  // namespace

std::span<const Operation<ClassIniFile>> ClassIniFile::operations() {
  return kOperations;
}

MemberId ClassIniFile::member(std::string_view name) const {
  return equal_ignoring_case(name, "INIFileName") ? kFileName : member_of(operations(), name);
}

Value ClassIniFile::invoke(MemberId id, CallKind kind, Arguments arguments) {
  if (id != kFileName) return call_operation(operations(), *this, id, kind, arguments);
  if (kind == CallKind::Set) raise(errors::kNoSuchMember);
  const bool assigns = kind == CallKind::Let;
  if (arguments.size() != (assigns ? 1u : 0u)) raise(errors::kWrongArgumentCount);
  if (!assigns) return Value::text(INIFileName());
  set_INIFileName(*arguments[0]);
  return {};
}

void ClassIniFile::set_INIFileName(const Value& New_IniPath) {
  file_ = to_text(New_IniPath).string();
}

void ClassIniFile::set_file(std::string_view folder, std::string_view name) {
  file_ = services::ini_path(folder, name);
}

services::IniStore ClassIniFile::store() const {
  return {equipment_.profile_strings, equipment_.code_pages, equipment_.deployment.ansi_code_page};
}

void ClassIniFile::WriteIniKey(Value& strSection, Value& strKey, Value& strValue) {
  services::WriteIniKey(store(), file_, strSection, strKey, strValue);
}

Value ClassIniFile::GetIniKey(Value& strSection, Value& strKey) {
  return services::GetIniKey(store(), file_, strSection, strKey);
}

Value ClassIniFile::DelIniKey(Value& SectionName, Value& KeyWord) {
  services::DelIniKey(store(), file_, SectionName, KeyWord);
  return {};
}

Value ClassIniFile::DelIniSec(Value& SectionName) {
  services::DelIniSec(store(), file_, SectionName);
  return {};
}

}  // namespace rk::classes
