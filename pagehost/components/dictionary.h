// Dictionary (Scripting.Dictionary): values by keys of any plain kind, in the order in which the
// keys came. Texts are keys by their letters, or without letter case where CompareMode says so.
#ifndef RK_PAGEHOST_COMPONENTS_DICTIONARY_H_
#define RK_PAGEHOST_COMPONENTS_DICTIONARY_H_

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pagehost/pages/tabled_object.h"

namespace rk::pagehost {

class Dictionary final : public TabledObject<Dictionary> {
 public:
  std::string_view type_name() const override { return "Dictionary"; }
  static std::span<const Member<Dictionary>> members();
  std::unique_ptr<Enumeration> enumerate() override;  // the keys

 private:
  struct Entry {
    Value key;
    Value item;
  };

  Value item(const Call& call);
  Value add(const Call& call);
  Value exists(const Call& call);
  Value remove(const Call& call);
  Value remove_all(const Call& call);
  Value count(const Call& call);
  Value keys(const Call& call);
  Value items(const Call& call);
  Value key(const Call& call);
  Value compare_mode(const Call& call);

  std::string name_of(const Value& key) const;
  Entry& entry(const Value& key);  // made where it is not there
  std::vector<Value> key_list() const;

  // By the number of its coming, so that removing keeps the order.
  std::map<std::uint64_t, Entry> entries_;
  std::unordered_map<std::string, std::uint64_t> places_;
  std::uint64_t came_ = 0;
  std::int32_t compare_mode_ = 0;  // 0 by letters, 1 without letter case
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_DICTIONARY_H_
