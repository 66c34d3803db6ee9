// From, joins and Where.
#include "jetsql/writer.h"

namespace rk::jetsql {

namespace {

using Kind = Source::Kind;

bool is_leaf(const Source& source) {
  return source.left == nullptr;
}

// The operands of a join in the order in which they are written. A Right join is a Left join the
// other way about; an Inner join begins with the side that is a join itself, which saves brackets:
// within brackets the engine does not know its rows' numbers.
struct Sides {
  const Source* first;
  const Source* second;
};

Sides sides(const Source& join) {
  const bool turned = join.kind == Kind::Right ||
                      (join.kind == Kind::Inner && is_leaf(*join.left) && !is_leaf(*join.right));
  return turned ? Sides{join.right, join.left} : Sides{join.left, join.right};
}

void add_numbered(const Source& source, std::vector<const Binding*>& found) {
  if (is_leaf(source)) {
    if (!source.binding->row_id.empty()) found.push_back(source.binding);
    return;
  }
  const Sides written = sides(source);
  // What turned about only for the writing keeps its place.
  const bool kept = source.kind == Kind::Inner && written.first == source.right;
  if (kept) add_numbered(*written.second, found);
  add_numbered(*written.first, found);
  if (!kept && is_leaf(*written.second)) add_numbered(*written.second, found);
}

}  // namespace

std::vector<const Binding*> Writer::numbered(const std::vector<Source*>& sources) {
  std::vector<const Binding*> found;
  for (const Source* source : sources) add_numbered(*source, found);
  return found;
}

void Writer::from(const std::vector<Source*>& sources, std::string& out) {
  for (std::size_t i = 0; i < sources.size(); ++i) {
    out += i == 0 ? " FROM " : ", ";
    source(*sources[i], out);
  }
}

void Writer::source(const Source& source, std::string& out) {
  if (!is_leaf(source)) {
    const Sides written = sides(source);
    this->source(*written.first, out);
    out += source.kind == Kind::Inner ? " INNER JOIN " : " LEFT JOIN ";
    operand(*written.second, out);
    out += " ON ";
    return condition(*source.on, out);
  }
  if (source.kind == Kind::Derived) {
    out.append("(").append(whole(*source.select, true)).append(")");
  } else {
    name(source.binding->table->name, out);
  }
  if (source.alias.empty()) return;
  out += " AS ";
  name(source.alias, out);
}

void Writer::operand(const Source& source, std::string& out) {
  if (is_leaf(source)) return this->source(source, out);
  out += '(';
  this->source(source, out);
  out += ')';
}

void Writer::condition(const Expression& e, std::string& out) {
  if (e.type == Type::Boolean) return bare(e, out);
  truth(e, out);
}

void Writer::where(const Expression* e, std::string& out) {
  if (e == nullptr) return;
  out += " WHERE ";
  condition(*e, out);
}

}  // namespace rk::jetsql
