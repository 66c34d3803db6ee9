// classIniFile, an INI settings file, as pages see it: one property and four operations. What an
// operation does stands in services/.
//
// Every call goes to the file; the object keeps nothing but its name. Of one page's thread.
#ifndef RK_CLASSES_CLASS_INI_FILE_H_
#define RK_CLASSES_CLASS_INI_FILE_H_

#include <span>
#include <string>
#include <string_view>

#include "classes/equipment.h"
#include "classes/operations.h"
#include "services/ini_settings.h"
#include "value/object.h"
#include "value/value.h"

namespace rk::classes {

class ClassIniFile : public Object {
 public:
  explicit ClassIniFile(const Equipment& equipment) : equipment_(equipment) {}

  // The table of the operations that scripts reach; the property INIFileName stands beside it.
  static std::span<const Operation<ClassIniFile>> operations();

  std::string_view type_name() const override { return "classIniFile"; }
  MemberId member(std::string_view name) const override;
  Value invoke(MemberId id, CallKind kind, Arguments arguments) override;

  // The full path of the file, kept as it is given; "" until it is set.
  const std::string& INIFileName() const { return file_; }
  void set_INIFileName(const Value& New_IniPath);
  // The same out of a folder and a name; not for scripts.
  void set_file(std::string_view folder, std::string_view name);

  void WriteIniKey(Value& strSection, Value& strKey, Value& strValue);
  Value GetIniKey(Value& strSection, Value& strKey);
  Value DelIniKey(Value& SectionName, Value& KeyWord);
  Value DelIniSec(Value& SectionName);

 private:
  services::IniStore store() const;

  const Equipment equipment_;
  std::string file_;
};

}  // namespace rk::classes

#endif  // RK_CLASSES_CLASS_INI_FILE_H_
