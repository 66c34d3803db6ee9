// XPath over a tree, bounded in the expression's length and in the steps that it takes.

#include <libxml/tree.h>
#include <libxml/xmlerror.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <algorithm>
#include <memory>
#include <new>

#include "adapters/xml/documents.h"
#include "adapters/xml/tree.h"
#include "value/script_error.h"

namespace rk::xml {
namespace {

// Brackets inside one another, over which the engine recurses.
constexpr int kMaxBrackets = 32;

struct ContextDeleter {
  void operator()(xmlXPathContext* context) const { xmlXPathFreeContext(context); }
};
using Context = std::unique_ptr<xmlXPathContext, ContextDeleter>;

struct ResultDeleter {
  void operator()(xmlXPathObject* result) const { xmlXPathFreeObject(result); }
};
using Result = std::unique_ptr<xmlXPathObject, ResultDeleter>;

// The first error's code, counted from the engine's first one; the words are not handed out.
struct Complaint {
  int code = XPATH_EXPRESSION_OK;
  static void take(void* data, xmlError* error) {
    auto& complaint = *static_cast<Complaint*>(data);
    if (error != nullptr && complaint.code == XPATH_EXPRESSION_OK) {
      complaint.code = error->code - XML_XPATH_EXPRESSION_OK;
    }
  }
};

void say_nothing(void*, const char*, ...) {}

std::string_view words_of(int code) {
  switch (code) {
    case XPATH_EXPRESSION_OK:
      return "it names no nodes";
    case XPATH_UNDEF_PREFIX_ERROR:
      return "a prefix has no namespace";
    case XPATH_UNKNOWN_FUNC_ERROR:
      return "a function is not known";
    case XPATH_UNDEF_VARIABLE_ERROR:
      return "a variable is not known";
    case XPATH_OP_LIMIT_EXCEEDED:
      return "it takes too long";
    case XPATH_UNFINISHED_LITERAL_ERROR:
      return "a text in it is not closed";
    case XPATH_UNCLOSED_ERROR:
    case XPATH_INVALID_PREDICATE_ERROR:
      return "a bracket in it is not closed";
    default:
      return "it is no XPath expression";
  }
}

[[noreturn]] void refuse(std::string_view xpath, std::string_view why) {
  throw ScriptError(errors::kSqlFailure,
                    "'" + std::string(xpath) + "' cannot be selected: " + std::string(why));
}

bool nests_too_deep(std::string_view xpath) {
  int depth = 0;
  for (const char c : xpath) {
    if (c == '(' || c == '[') ++depth;
    if (c == ')' || c == ']') --depth;
    if (depth > kMaxBrackets) return true;
  }
  return false;
}

// Nodes of namespaces are no part of the tree, and what is in a DTD has no handle.
bool has_handle(const xmlNode* node) {
  return node->type != XML_NAMESPACE_DECL && node->type != XML_DTD_NODE &&
         node->type != XML_ENTITY_DECL && node->type != XML_ENTITY_NODE;
}

}  // namespace

std::vector<Tree::Node*> Tree::select(const Node* from, std::string_view xpath,
                                      const platform::XmlPrefixes& prefixes) {
  if (xpath.size() > kMaxXPathBytes || nests_too_deep(xpath)) {
    refuse(xpath.substr(0, 80), "it is too long");
  }
  const Context context(xmlXPathNewContext(document_));
  if (!context) throw std::bad_alloc();
  xmlSetGenericErrorFunc(nullptr, say_nothing);  // of this thread; else some go to standard error
  Complaint complaint;
  context->userData = &complaint;
  context->error = Complaint::take;
  context->opLimit = kMaxXPathSteps;
  context->node = reinterpret_cast<xmlNode*>(const_cast<Node*>(from));
  for (const auto& [prefix, name] : prefixes) {
    xmlXPathRegisterNs(context.get(), BAD_CAST prefix.c_str(), BAD_CAST name.c_str());
  }
  const std::string text(xpath.substr(0, xpath.find('\0')));
  const Result result(xmlXPathEvalExpression(BAD_CAST text.c_str(), context.get()));
  if (!result || result->type != XPATH_NODESET) refuse(xpath, words_of(complaint.code));
  std::vector<Node*> out;
  const xmlNodeSet* nodes = result->nodesetval;
  for (int i = 0; nodes != nullptr && i < nodes->nodeNr; ++i) {
    if (has_handle(nodes->nodeTab[i])) out.push_back(reinterpret_cast<Node*>(nodes->nodeTab[i]));
  }
  return out;
}

}  // namespace rk::xml
