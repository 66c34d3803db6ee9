// The members of texts, CDATA sections and comments that take a part of what they hold.

#include <algorithm>
#include <limits>

#include "pagehost/components/xml_node.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk::pagehost {

// What is before, within and behind some units of a text.
struct XmlNodeObject::Cut {
  std::string before;
  std::string within;
  std::string behind;
};

// A count that goes past the end goes to the end.
XmlNodeObject::Cut XmlNodeObject::cut(std::int32_t offset, std::int32_t count) const {
  const Text text(document().value(node_).value_or(""));
  if (offset < 0 || count < 0 || static_cast<std::size_t>(offset) > text.length()) {
    raise(errors::kInvalidCall);
  }
  const auto from = static_cast<std::size_t>(offset);
  const std::size_t units = std::min(static_cast<std::size_t>(count), text.length() - from);
  return {text.mid(0, from).string(), text.mid(from, units).string(),
          text.mid(from + units, text.length() - from - units).string()};
}

void XmlNodeObject::put(const std::string& value) {
  document().set_value(node_, value);
  tree_->changed();
}

Value XmlNodeObject::append_data(const Call& call) {
  must_hold_text();
  put(document().value(node_).value_or("") + call.text(0));
  return {};
}

// substringData(offset, count)
Value XmlNodeObject::substring_data(const Call& call) {
  must_hold_text();
  return Value::text(cut(call.number(0), call.number(1)).within);
}

// insertData(offset, text)
Value XmlNodeObject::insert_data(const Call& call) {
  must_hold_text();
  const Cut at = cut(call.number(0), 0);
  put(at.before + call.text(1) + at.behind);
  return {};
}

// deleteData(offset, count)
Value XmlNodeObject::delete_data(const Call& call) {
  must_hold_text();
  const Cut at = cut(call.number(0), call.number(1));
  put(at.before + at.behind);
  return {};
}

// replaceData(offset, count, text)
Value XmlNodeObject::replace_data(const Call& call) {
  must_hold_text();
  const Cut at = cut(call.number(0), call.number(1));
  put(at.before + call.text(2) + at.behind);
  return {};
}

// splitText(offset): what is behind becomes a node of its own, next to this one, and is answered.
Value XmlNodeObject::split_text(const Call& call) {
  if (kind() != Kind::CData) must_be(Kind::Text);
  const Cut at = cut(call.number(0), std::numeric_limits<std::int32_t>::max());
  Node* made = document().create(kind(), "", "", at.within);
  Node* parent = document().parent(node_);
  if (parent != nullptr) document().insert(parent, made, document().next(node_));
  put(at.before);
  return value_of(made);
}

}  // namespace rk::pagehost
