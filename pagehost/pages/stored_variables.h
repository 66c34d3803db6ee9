// What the Application and Session objects of scripts share: variables by name, and the Contents
// collection over them. Of the page's thread.
#ifndef RK_PAGEHOST_PAGES_STORED_VARIABLES_H_
#define RK_PAGEHOST_PAGES_STORED_VARIABLES_H_

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/pages/tabled_object.h"

namespace rk::pagehost {

class StoredVariables {
 public:
  virtual ~StoredVariables() = default;
  virtual Value stored(std::string_view name) = 0;  // Empty where never stored
  virtual void store(std::string_view name, Value value) = 0;
  virtual void remove(std::string_view name) = 0;
  virtual void clear() = 0;
  virtual std::vector<std::string> names() = 0;
};

// The default member of Application and Session: reads or assigns one variable.
Value variable_item(StoredVariables& variables, const Call& call);

class ContentsObject final : public TabledObject<ContentsObject> {
 public:
  explicit ContentsObject(std::shared_ptr<StoredVariables> variables)
      : variables_(std::move(variables)) {}
  std::string_view type_name() const override { return "IVariantDictionary"; }
  static std::span<const Member<ContentsObject>> members();
  std::unique_ptr<Enumeration> enumerate() override;

 private:
  Value item(const Call& call);
  Value count(const Call& call);
  Value key(const Call& call);
  Value remove(const Call& call);
  Value remove_all(const Call& call);
  std::string name_of(const Value& index);

  std::shared_ptr<StoredVariables> variables_;
};

// A walk over names, as For Each over a collection gives them.
std::unique_ptr<Enumeration> walk_over(std::vector<std::string> names);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_STORED_VARIABLES_H_
