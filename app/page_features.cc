#include "app/page_features.h"

#include <algorithm>
#include <array>
#include <memory>
#include <set>

#include "value/script_error.h"
#include "value/text.h"
#include "vbscript/parser.h"
#include "vbscript/syntax_tree.h"

namespace rk::app {

namespace {

using vbscript::Expression;
using vbscript::NameId;
using vbscript::Position;
using vbscript::Source;
using vbscript::SourcePiece;
using vbscript::Statement;
using vbscript::SyntaxTree;

constexpr std::array<std::string_view, 5> kIntrinsics{"request", "response", "server", "session",
                                                      "application"};
constexpr std::string_view kRendererMark = "show_";

std::string place_of(const Source& source, Position position) {
  const SourcePiece& piece = source.pieces.at(static_cast<std::size_t>(position.piece));
  const std::size_t offset = std::min<std::size_t>(position.offset, piece.text.size());
  const auto end = piece.text.begin() + static_cast<std::ptrdiff_t>(offset);
  const auto lines = std::count(piece.text.begin(), end, '\n');
  return source.files.at(static_cast<std::size_t>(piece.file)) + ":" +
         std::to_string(piece.line + lines);
}

bool is_text(const Expression& e) {
  return e.kind == Expression::Kind::Constant && e.literal && e.value.is_text();
}

// The class that `Server.CreateObject("...")` or `CreateObject("...")` names.
std::optional<std::string> created_class(const SyntaxTree& tree, const Expression& e) {
  if (e.kind != Expression::Kind::Call || e.left == nullptr || e.arguments.empty()) return {};
  const Expression& called = *e.left;
  const bool member = called.kind == Expression::Kind::Member &&
                      called.left->kind == Expression::Kind::Name &&
                      tree.names.folded(called.left->name) == "server";
  if (!member && called.kind != Expression::Kind::Name) return {};
  if (tree.names.folded(called.name) != "createobject") return {};
  const Expression& argument = *e.arguments.front();
  if (!is_text(argument)) return {};
  return std::string(argument.value.as_text().view());
}

bool is_nothing(const Expression& e) {
  return e.kind == Expression::Kind::Constant && e.value.is_object() && !e.value.as_object();
}

}  // namespace

// The faults of one page.
class FaultFinder {
 public:
  FaultFinder(PageFeatures& features, const Source& source, const SyntaxTree& tree)
      : features_(features), source_(source), tree_(tree) {
    for (const Statement& s : tree.statements) note_statement(s);
    for (const auto& procedure : tree.procedure_store) {
      settle(procedure.name);
      for (const vbscript::Parameter& parameter : procedure.parameters) settle(parameter.name);
    }
    for (const auto& c : tree.class_store) {
      settle(c.name);
      for (const vbscript::Declarator& field : c.fields) settle(field.name);
    }
    for (const Expression& e : tree.expressions) note_arguments(e.left, e.arguments);
  }

  std::vector<std::string> faults() {
    for (const Expression& e : tree_.expressions) {
      check_class(e);
      check_member(e);
    }
    std::sort(found_.begin(), found_.end(), [](const Found& a, const Found& b) {
      return std::pair(a.position.piece, a.position.offset) <
             std::pair(b.position.piece, b.position.offset);
    });
    std::vector<std::string> texts;
    for (const Found& each : found_) texts.push_back(place_of(source_, each.position) + each.text);
    return texts;
  }

 private:
  struct Found {
    Position position;
    std::string text;
  };

  // A name that the page itself means something by.
  void settle(NameId name) { uncertain_.insert(name); }
  void settle(const Expression* target) {
    if (target != nullptr && target->kind == Expression::Kind::Name) settle(target->name);
  }

  void note_statement(const Statement& s) {
    switch (s.kind) {
      case Statement::Kind::SetAssign:
        if (s.target->kind == Expression::Kind::Name) note_set(s.target->name, *s.value);
        break;
      case Statement::Kind::Assign:
      case Statement::Kind::For:
      case Statement::Kind::ForEach:
        settle(s.target);
        break;
      case Statement::Kind::Call:
        note_arguments(s.target, s.arguments);
        break;
      case Statement::Kind::Dim:
        for (const vbscript::Declarator& each : s.declarators) declared_.insert(each.name);
        break;
      case Statement::Kind::Const:
        for (const vbscript::Constant& each : s.constants) settle(each.name);
        break;
      default:
        break;
    }
  }
  void note_set(NameId name, const Expression& value) {
    if (is_nothing(value)) return;
    if (const auto program_identifier = created_class(tree_, value)) {
      classes_[name].insert(lowered_ascii(*program_identifier));
    } else {
      settle(name);
    }
  }
  // The page's own procedures may give another object to what they are called with.
  void note_arguments(const Expression* called, const std::vector<const Expression*>& arguments) {
    if (called == nullptr || called->kind != Expression::Kind::Name) return;
    for (const Expression* argument : arguments) settle(argument);
  }

  void check_class(const Expression& e) {
    const auto program_identifier = created_class(tree_, e);
    if (!program_identifier || features_.object_of(*program_identifier) != nullptr) return;
    found_.push_back(
        {e.left->position, ": no class is served by the name \"" + *program_identifier + "\""});
  }

  void check_member(const Expression& e) {
    if (e.kind != Expression::Kind::Member || e.left->kind != Expression::Kind::Name) return;
    const NameId name = e.left->name;
    if (uncertain_.contains(name)) return;
    const std::string& member = tree_.names.text(e.name);
    const auto of_class = classes_.find(name);
    if (of_class == classes_.end()) {
      if (declared_.contains(name)) return;
      const Object* object = features_.intrinsic(tree_.names.folded(name));
      if (object != nullptr && object->member(member) == kNoMember) {
        add_missing(e, tree_.names.text(name), member);
      }
      return;
    }
    for (const std::string& program_identifier : of_class->second) {
      const Object* object = features_.object_of(program_identifier);
      if (object == nullptr || object->member(member) != kNoMember) return;
    }
    add_missing(e, tree_.names.text(name), member);
  }
  void add_missing(const Expression& e, const std::string& object, const std::string& member) {
    found_.push_back({e.position, ": " + object + " has no member " + member});
  }

  PageFeatures& features_;
  const Source& source_;
  const SyntaxTree& tree_;
  std::map<NameId, std::set<std::string>> classes_;  // that CreateObject gives to a variable
  std::set<NameId> uncertain_;                       // variables that may be anything else
  std::set<NameId> declared_;
  std::vector<Found> found_;
};

const Object* PageFeatures::object_of(std::string_view program_identifier) {
  const auto [at, is_new] = made_.try_emplace("class " + lowered_ascii(program_identifier));
  const pagehost::ObjectFactory* factory = programs_.find(program_identifier);
  if (is_new && factory != nullptr) at->second = (*factory)(page_);
  return at->second.get();
}

const Object* PageFeatures::intrinsic(std::string_view name) {
  if (std::find(kIntrinsics.begin(), kIntrinsics.end(), name) == kIntrinsics.end()) return nullptr;
  const auto [at, is_new] = made_.try_emplace(std::string(name));
  if (is_new) {
    const Ref<platform::ScriptingContext> context = page_.context();
    at->second = Ref<Object>(context->invoke(context->member(name), CallKind::Get, {}).as_object());
  }
  return at->second.get();
}

std::vector<std::string> PageFeatures::faults(const pagehost::PageSource& page) {
  const std::unique_ptr<SyntaxTree> tree = vbscript::Parser(page.source).script();
  std::vector<std::string> found = FaultFinder(*this, page.source, *tree).faults();
  for (const pagehost::ObjectDeclaration& each : page.objects) {
    if (object_of(each.program_identifier) != nullptr) continue;
    found.push_back(page.source.files.front() + ":1: no class is served by the name \"" +
                    each.program_identifier + "\" of the object " + each.id);
  }
  return found;
}

bool PageFeatures::creates(const pagehost::PageSource& page, std::string_view program_identifier) {
  const auto means_it = [&](std::string_view name) {
    return equal_ignoring_case(name, program_identifier);
  };
  const std::unique_ptr<SyntaxTree> tree = vbscript::Parser(page.source).script();
  for (const Expression& e : tree->expressions) {
    const auto created = created_class(*tree, e);
    if (created && means_it(*created)) return true;
  }
  return std::any_of(page.objects.begin(), page.objects.end(),
                     [&](const auto& each) { return means_it(each.program_identifier); });
}

std::vector<RendererCall> PageFeatures::renderer_calls(const pagehost::PageSource& page) {
  const std::unique_ptr<SyntaxTree> tree = vbscript::Parser(page.source).script();
  std::vector<RendererCall> calls;
  const auto add = [&](const Expression* called, const std::vector<const Expression*>& arguments) {
    if (called == nullptr || called->kind != Expression::Kind::Member) return;
    if (!tree->names.folded(called->name).starts_with(kRendererMark)) return;
    RendererCall call{tree->names.text(called->name), {}, place_of(page.source, called->position)};
    if (!arguments.empty() && is_text(*arguments.front())) {
      call.style = arguments.front()->value.as_text().string();
    }
    calls.push_back(std::move(call));
  };
  for (const Expression& e : tree->expressions) {
    if (e.kind == Expression::Kind::Call) add(e.left, e.arguments);
    if (e.kind == Expression::Kind::Member) add(&e, {});
  }
  for (const Statement& s : tree->statements) {
    if (s.kind == Statement::Kind::Call) add(s.target, s.arguments);
  }
  return calls;
}

}  // namespace rk::app
