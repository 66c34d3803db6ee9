#include "jetsql/schema.h"

#include "jetsql/letters.h"

namespace rk::jetsql {

namespace {

struct Declaration {
  std::string_view word;
  Type type;
};

constexpr Declaration kDeclarations[] = {
    {"integer", Type::Integer},  {"int", Type::Integer},       {"long", Type::Integer},
    {"smallint", Type::Integer}, {"tinyint", Type::Integer},   {"bigint", Type::Integer},
    {"byte", Type::Integer},     {"counter", Type::Integer},   {"autoincrement", Type::Integer},
    {"real", Type::Double},      {"double", Type::Double},     {"float", Type::Double},
    {"single", Type::Double},    {"decimal", Type::Double},    {"numeric", Type::Double},
    {"number", Type::Double},    {"currency", Type::Currency}, {"money", Type::Currency},
    {"boolean", Type::Boolean},  {"bool", Type::Boolean},      {"yesno", Type::Boolean},
    {"bit", Type::Boolean},      {"logical", Type::Boolean},   {"datetime", Type::Date},
    {"date", Type::Date},        {"timestamp", Type::Date},    {"time", Type::Date},
    {"text", Type::Text},        {"varchar", Type::Text},      {"char", Type::Text},
    {"nvarchar", Type::Text},    {"nchar", Type::Text},        {"character", Type::Text},
    {"memo", Type::Text},        {"clob", Type::Text},         {"string", Type::Text},
    {"longtext", Type::Text},    {"hyperlink", Type::Text},    {"guid", Type::Text},
    {"blob", Type::Blob},        {"binary", Type::Blob},       {"varbinary", Type::Blob},
    {"longbinary", Type::Blob},  {"oleobject", Type::Blob},    {"image", Type::Blob},
};

}  // namespace

std::string lower_letters(std::string_view text) {
  std::string lowered(text);
  for (char& c : lowered) c = lower(c);
  return lowered;
}

Type type_of_declaration(std::string_view declaration) {
  std::size_t begin = 0;
  while (begin < declaration.size() && is_blank(declaration[begin])) ++begin;
  std::size_t end = begin;
  while (end < declaration.size() && is_letter(declaration[end])) ++end;
  const std::string_view word = declaration.substr(begin, end - begin);
  for (const Declaration& known : kDeclarations) {
    if (same_letters(known.word, word)) return known.type;
  }
  return Type::Unknown;
}

const Column* Table::column(std::string_view column_name) const {
  for (const Column& candidate : columns) {
    if (same_letters(candidate.name, column_name)) return &candidate;
  }
  return nullptr;
}

}  // namespace rk::jetsql
