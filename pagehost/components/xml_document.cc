#include "pagehost/components/xml_document.h"

#include <cstdint>
#include <utility>
#include <variant>

#include "pagehost/components/file_paths.h"
#include "pagehost/components/stream_object.h"
#include "value/array.h"
#include "value/script_error.h"

namespace rk::pagehost {
namespace {

using platform::XmlKind;

constexpr std::int32_t kLoaded = 4;  // readyState
constexpr std::int32_t kNotLocated = -2146697210;
constexpr std::string_view kNotLocatedWords = "The system cannot locate the object specified.";
constexpr std::string_view kXPath = "XPath";
constexpr std::string_view kPatterns = "XSLPattern";
constexpr KnownError kUnknownLanguage{errors::kInvalidCall.number,
                                      "SelectionLanguage is XPath or XSLPattern."};
constexpr KnownError kUnknownProperty{errors::kInvalidCall.number,
                                      "The document has no property of this name."};

class ParseErrorObject final : public TabledObject<ParseErrorObject> {
 public:
  explicit ParseErrorObject(XmlProblem problem) : problem_(std::move(problem)) {}
  std::string_view type_name() const override { return "IXMLDOMParseError"; }
  static std::span<const Member<ParseErrorObject>> members() {
    using P = ParseErrorObject;
    static constexpr Member<P> kMembers[] = {
        {"errorCode", &P::number}, {"reason", &P::reason}, {"line", &P::line},
        {"linepos", &P::column},   {"srcText", &P::text},  {"url", &P::address},
        {"filepos", &P::place},
    };
    return kMembers;
  }

 private:
  Value number(const Call&) { return Value::long_integer(problem_.number); }
  Value reason(const Call&) { return Value::text(problem_.reason); }
  Value line(const Call&) { return Value::long_integer(problem_.line); }
  Value column(const Call&) { return Value::long_integer(problem_.column); }
  Value text(const Call&) { return Value::text(problem_.line_text); }
  Value address(const Call&) { return Value::text(problem_.address); }
  Value place(const Call&) { return Value::long_integer(0); }

  XmlProblem problem_;
};

bool is_address(std::string_view path) {
  const std::string lower = lowered_ascii(path.substr(0, 8));
  return lower.starts_with("http://") || lower.starts_with("https://");
}

// What an object with this member answers; the arguments are its own.
Value called(Object& object, MemberId member, std::vector<Value> arguments) {
  std::vector<Value*> places;
  for (Value& argument : arguments) places.push_back(&argument);
  return object.invoke(member, CallKind::Get, places);
}

// The bytes of a Request or a stream.
Value bytes_of_object(Object& source) {
  if (auto* stream = dynamic_cast<StreamObject*>(&source)) {
    return Value::array(Array::of_bytes(stream->rest()));
  }
  if (const MemberId read = source.member("BinaryRead"); read != kNoMember) {
    return called(source, read, {called(source, source.member("TotalBytes"), {})});
  }
  const MemberId read = source.member("Read");
  if (read == kNoMember) raise(errors::kTypeMismatch);
  return called(source, read, {});
}

// "xmlns:a='urn:a' xmlns:b='urn:b'".
platform::XmlPrefixes prefixes_of(std::string_view text) {
  platform::XmlPrefixes out;
  constexpr std::string_view kWord = "xmlns:";
  while (true) {
    const std::size_t at = text.find(kWord);
    if (at == std::string_view::npos) return out;
    text.remove_prefix(at + kWord.size());
    const std::size_t equals = text.find('=');
    const std::size_t quote = text.find_first_of("\"'", equals);
    if (equals == std::string_view::npos || quote == std::string_view::npos) return out;
    const std::size_t end = text.find(text[quote], quote + 1);
    if (end == std::string_view::npos) return out;
    out.emplace_back(without_outer_space(text.substr(0, equals)),
                     text.substr(quote + 1, end - quote - 1));
    text.remove_prefix(end + 1);
  }
}

class KeptDocument final : public KeptObject {
 public:
  explicit KeptDocument(const XmlTree& tree)
      : text_(tree.text()),
        keep_white_space_(tree.keep_white_space),
        patterns_(tree.patterns),
        prefixes_(tree.prefixes),
        of_page_(tree.services.of_page) {}
  std::string_view type_name() const override { return "DOMDocument"; }
  Ref<Object> made_for(PageServices& page) const override {
    auto tree = std::make_shared<XmlTree>(of_page_(page));
    tree->keep_white_space = keep_white_space_;
    tree->patterns = patterns_;
    tree->prefixes = prefixes_;
    if (!text_.empty()) tree->read(text_);
    return make_ref<XmlDocumentObject>(tree);
  }

 private:
  std::string text_;
  bool keep_white_space_;
  bool patterns_;
  platform::XmlPrefixes prefixes_;
  std::function<XmlServices(PageServices&)> of_page_;
};

Value flag(const Call& call, bool& kept) {
  if (!call.assigns()) return Value::boolean(kept);
  kept = to_boolean(call.assigned());
  return {};
}

}  // namespace

XmlDocumentObject::XmlDocumentObject(const XmlServices& services)
    : XmlDocumentObject(std::make_shared<XmlTree>(services)) {}

XmlDocumentObject::XmlDocumentObject(const XmlTreeRef& tree)
    : TabledObject(tree, tree->document->root()) {}

std::span<const Member<XmlDocumentObject>> XmlDocumentObject::members() {
  using D = XmlDocumentObject;
  static constexpr auto kMembers = with_node_members<D>({
      {"documentElement", &D::document_element, 0, 0, Access::Both},
      {"createElement", &D::create_element, 1, 1},
      {"createTextNode", &D::create_text_node, 1, 1},
      {"createComment", &D::create_comment, 1, 1},
      {"createCDATASection", &D::create_cdata, 1, 1},
      {"createProcessingInstruction", &D::create_instruction, 2, 2},
      {"createAttribute", &D::create_attribute, 1, 1},
      {"createDocumentFragment", &D::create_fragment},
      {"createEntityReference", &D::create_entity_reference, 1, 1},
      {"createNode", &D::create_node, 3, 3},
      {"importNode", &D::import_node, 2, 2},
      {"load", &D::load, 1, 1},
      {"loadXML", &D::load_xml, 1, 1},
      {"save", &D::save, 1, 1},
      {"parseError", &D::parse_error},
      {"readyState", &D::ready_state},
      {"doctype", &D::doctype},
      {"url", &D::url},
      {"preserveWhiteSpace", &D::preserve_white_space, 0, 0, Access::Both},
      {"async", &D::async, 0, 0, Access::Both},
      {"validateOnParse", &D::validate_on_parse, 0, 0, Access::Both},
      {"resolveExternals", &D::resolve_externals, 0, 0, Access::Both},
      {"setProperty", &D::set_property, 2, 2},
      {"getProperty", &D::property, 1, 1},
      {"abort", &D::ignored},
      {"onreadystatechange", &D::ignored, 0, 0, Access::Write},
      {"ondataavailable", &D::ignored, 0, 0, Access::Write},
      {"ontransformnode", &D::ignored, 0, 0, Access::Write},
  });
  return kMembers;
}

Ref<KeptObject> XmlDocumentObject::kept() const {
  if (!tree_->services.of_page) raise(errors::kInvalidCall);
  return make_ref<KeptDocument>(*tree_);
}

// Set: takes the place of the top element.
Value XmlDocumentObject::document_element(const Call& call) {
  Node* top = nullptr;
  for (Node* each : document().children(node_)) {
    if (document().kind(each) == Kind::Element) top = each;
  }
  if (!call.assigns()) return value_of(top);
  Node* given = node_for(tree_, call.assigned());
  if (given == top) return {};
  if (document().kind(given) != Kind::Element) raise(errors::kTypeMismatch);
  Node* after = top == nullptr ? nullptr : document().next(top);
  if (top != nullptr) document().remove(top);
  document().insert(node_, given, after);
  tree_->changed();
  return {};
}

Value XmlDocumentObject::created(Kind kind, std::string_view name, std::string_view value,
                                 std::string_view namespace_name) {
  Node* made = document().create(kind, name, namespace_name, value);
  tree_->changed();
  return value_of(made);
}

Value XmlDocumentObject::create_element(const Call& call) {
  return created(Kind::Element, call.text(0), "");
}

Value XmlDocumentObject::create_text_node(const Call& call) {
  return created(Kind::Text, "", joined_text(call.at(0)).view());
}

Value XmlDocumentObject::create_comment(const Call& call) {
  return created(Kind::Comment, "", joined_text(call.at(0)).view());
}

Value XmlDocumentObject::create_cdata(const Call& call) {
  return created(Kind::CData, "", joined_text(call.at(0)).view());
}

Value XmlDocumentObject::create_instruction(const Call& call) {
  return created(Kind::Instruction, call.text(0), joined_text(call.at(1)).view());
}

Value XmlDocumentObject::create_attribute(const Call& call) {
  return created(Kind::Attribute, call.text(0), "");
}

Value XmlDocumentObject::create_fragment(const Call&) {
  return created(Kind::Fragment, "", "");
}

Value XmlDocumentObject::create_entity_reference(const Call& call) {
  return created(Kind::EntityReference, call.text(0), "");
}

// createNode(type, name, namespace): the type by its number or its name.
Value XmlDocumentObject::create_node(const Call& call) {
  static constexpr std::pair<std::string_view, Kind> kTypes[] = {
      {"element", Kind::Element},
      {"attribute", Kind::Attribute},
      {"text", Kind::Text},
      {"cdatasection", Kind::CData},
      {"entityreference", Kind::EntityReference},
      {"processinginstruction", Kind::Instruction},
      {"comment", Kind::Comment},
      {"documentfragment", Kind::Fragment},
  };
  const Value type = plain_value(call.at(0));
  for (const auto& [name, kind] : kTypes) {
    const bool is_it = type.is_text() ? equal_ignoring_case(type.as_view(), name)
                                      : to_long(type) == static_cast<std::int32_t>(kind);
    if (is_it) return created(kind, call.text(1), "", call.text(2));
  }
  raise(errors::kInvalidCall);
}

Value XmlDocumentObject::import_node(const Call& call) {
  const Value& value = call.at(0);
  auto* given = value.is_object() ? dynamic_cast<XmlNodeObject*>(value.as_object()) : nullptr;
  if (given == nullptr) raise(errors::kTypeMismatch);
  Node* copy = document().copy(*given->tree()->document, given->node(), to_boolean(call.at(1)));
  tree_->changed();
  return value_of(copy);
}

// Nodes that scripts still hold stay with the document that they came from.
void XmlDocumentObject::begin() {
  auto fresh = std::make_shared<XmlTree>(tree_->services);
  fresh->be_set_as(*tree_);
  tree_ = std::move(fresh);
  node_ = document().root();
}

void XmlDocumentObject::load_bytes(std::string_view bytes) {
  begin();
  tree_->read_bytes(bytes);
  node_ = document().root();
}

void XmlDocumentObject::load_text(std::string_view utf8) {
  begin();
  tree_->read(utf8);
  node_ = document().root();
}

bool XmlDocumentObject::load_from(const Value& source) {
  begin();
  const bool loaded = loaded_from(source);
  node_ = document().root();
  return loaded;
}

Value XmlDocumentObject::load(const Call& call) {
  return Value::boolean(load_from(call.at(0)));
}

Value XmlDocumentObject::load_xml(const Call& call) {
  const Text text = joined_text(call.at(0));
  begin();
  address_.clear();
  const bool loaded = tree_->read(text.view());
  node_ = document().root();
  return Value::boolean(loaded);
}

// A path, an address, a Request, a stream, an array of bytes or another document.
bool XmlDocumentObject::loaded_from(const Value& source) {
  address_.clear();
  Value given = source;
  if (given.is_object() && given.as_object() != nullptr) {
    if (auto* other = dynamic_cast<XmlDocumentObject*>(given.as_object())) {
      return tree_->read(other->tree()->text());
    }
    given = bytes_of_object(*given.as_object());
  }
  if (given.is_array() && given.as_array().holds_bytes()) {
    return tree_->read_bytes(given.as_array().bytes());
  }
  if (given.is_null() || given.is_empty()) return tree_->read("");
  const std::string path = to_text(given).string();
  address_ = path;
  const bool loaded = is_address(path) ? loaded_address(path) : loaded_file(path);
  tree_->problem.address = loaded ? "" : path;
  return loaded;
}

std::string XmlDocumentObject::physical(std::string_view path) const {
  return path_in_site(tree_->services.site_root, path);
}

bool XmlDocumentObject::loaded_file(const std::string& path) {
  std::string bytes;
  try {
    bytes = tree_->services.system.files->read(physical(path));
  } catch (const ScriptError&) {  // told by parseError
    return tree_->fail({kNotLocated, std::string(kNotLocatedWords), "", "", 0, 0});
  }
  return tree_->read_bytes(bytes);
}

bool XmlDocumentObject::loaded_address(const std::string& address) {
  if (tree_->services.http) {
    platform::HttpRequest request;
    request.address = address;
    const auto answer = tree_->services.http->send(request);
    const auto* came = std::get_if<platform::HttpAnswer>(&answer);
    if (came != nullptr && came->status < 400) return tree_->read_bytes(came->body);
  }
  return tree_->fail({kNotLocated, std::string(kNotLocatedWords), "", "", 0, 0});
}

Value XmlDocumentObject::save(const Call& call) {
  save_into(call.at(0));
  return {};
}

void XmlDocumentObject::save_into(const Value& target) const {
  if (!target.is_object() || target.as_object() == nullptr) {
    return tree_->services.system.files->write(physical(to_text(target).view()), tree_->bytes());
  }
  if (auto* other = dynamic_cast<XmlDocumentObject*>(target.as_object())) {
    return other->load_bytes(tree_->bytes());
  }
  Object& object = *target.as_object();
  if (const MemberId write = object.member("BinaryWrite"); write != kNoMember) {
    // A Response says in which charset its bytes are.
    const std::string charset = joined_text(called(object, object.member("Charset"), {})).string();
    called(object, write, {Value::array(Array::of_bytes(tree_->bytes(charset)))});
    return;
  }
  const MemberId write = object.member("Write");
  if (write == kNoMember) raise(errors::kTypeMismatch);
  called(object, write, {Value::array(Array::of_bytes(tree_->bytes()))});
}

Value XmlDocumentObject::parse_error(const Call&) {
  return Value::object(make_ref<ParseErrorObject>(tree_->problem));
}

Value XmlDocumentObject::ready_state(const Call&) {
  return Value::long_integer(kLoaded);
}

Value XmlDocumentObject::doctype(const Call&) {
  for (Node* each : document().children(node_)) {
    if (document().kind(each) == Kind::DocumentType) return value_of(each);
  }
  return Value::nothing();
}

Value XmlDocumentObject::url(const Call&) {
  return Value::text(address_);
}

Value XmlDocumentObject::preserve_white_space(const Call& call) {
  return flag(call, tree_->keep_white_space);
}

Value XmlDocumentObject::async(const Call& call) {
  return flag(call, async_);
}

// No document is validated.
Value XmlDocumentObject::validate_on_parse(const Call& call) {
  return flag(call, validate_);
}

// Nothing outside of a document is ever read.
Value XmlDocumentObject::resolve_externals(const Call& call) {
  return flag(call, resolve_);
}

Value XmlDocumentObject::set_property(const Call& call) {
  const std::string name = lowered_ascii(call.text(0));
  if (name == "selectionlanguage") return set_language(call.text(1));
  if (name == "selectionnamespaces") tree_->prefixes = prefixes_of(call.text(1));
  properties_[name] = plain_value(call.at(1));
  return {};
}

Value XmlDocumentObject::set_language(std::string_view language) {
  const bool patterns = equal_ignoring_case(language, kPatterns);
  if (!patterns && !equal_ignoring_case(language, kXPath)) raise(kUnknownLanguage);
  tree_->patterns = patterns;
  return {};
}

Value XmlDocumentObject::property(const Call& call) {
  const std::string name = lowered_ascii(call.text(0));
  if (name == "selectionlanguage") return Value::text(tree_->patterns ? kPatterns : kXPath);
  const auto found = properties_.find(name);
  if (found != properties_.end()) return found->second;
  if (name == "selectionnamespaces") return Value::text("");
  raise(kUnknownProperty);
}

Value XmlDocumentObject::ignored(const Call&) {
  return {};
}

}  // namespace rk::pagehost
