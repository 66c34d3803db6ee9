#include "vbscript/parser.h"

#include "vbscript/lexer.h"
#include "vbscript/limits.h"
#include "vbscript/syntax_errors.h"

namespace rk::vbscript {

Parser::Deeper::Deeper(Parser& parser) : parser_(parser) {
  if (parser_.depth_ >= kMaxNesting) parser_.fail(syntax::kOutOfMemory);
  ++parser_.depth_;
}

Parser::Parser(const Source& source)
    : source_(source), tokens_(Lexer(source).tokens()), tree_(std::make_unique<SyntaxTree>()) {}

std::unique_ptr<SyntaxTree> Parser::script() {
  skip_separators();
  bool first = true;
  while (!is(TokenKind::EndOfSource)) {
    if (is(Keyword::Option) && !first) fail(syntax::kExpectedStatement);
    first = first && (is(Keyword::Option) || at_blank_text());
    script_item();
    skip_separators();
  }
  return std::move(tree_);
}

std::unique_ptr<SyntaxTree> Parser::expression_alone() {
  skip_separators();
  Statement& s = add(tree_->body, Statement::Kind::WriteValue);
  s.value = expression();
  skip_separators();
  if (!is(TokenKind::EndOfSource)) fail(syntax::kExpectedEndOfStatement);
  return std::move(tree_);
}

// A page may have a line end between two script marks where no statement may stand.
bool Parser::at_blank_text() const {
  return is(TokenKind::WriteLiteral) &&
         here().value.as_view().find_first_not_of(" \t\r\n") == std::string_view::npos;
}

// What may stand outside of procedures and blocks.
void Parser::script_item() {
  switch (here().kind == TokenKind::Name ? here().keyword : Keyword::None) {
    case Keyword::Sub:
      tree_->procedures.push_back(procedure(Procedure::Kind::Sub, true, false));
      return;
    case Keyword::Function:
      tree_->procedures.push_back(procedure(Procedure::Kind::Function, true, false));
      return;
    case Keyword::Class:
      class_declaration();
      return;
    case Keyword::Public:
    case Keyword::Private:
      visible_declaration(tree_->body);
      return;
    case Keyword::Option:
      option_explicit(tree_->body);
      return;
    default:
      statement(tree_->body);
  }
}

bool Parser::accept(TokenKind kind) {
  if (!is(kind)) return false;
  ++at_;
  return true;
}

bool Parser::accept(Keyword word) {
  if (!is(word)) return false;
  ++at_;
  return true;
}

void Parser::expect(TokenKind kind, const KnownError& error) {
  if (!accept(kind)) fail(error);
}

void Parser::expect(Keyword word, const KnownError& error) {
  if (!accept(word)) fail(error);
}

// Else, ElseIf and End If end the statement before them in the line form of If.
bool Parser::at_statement_end() const {
  if (is(TokenKind::NewLine) || is(TokenKind::Colon) || is(TokenKind::EndOfSource)) return true;
  if (is(Keyword::Else) || is(Keyword::ElseIf)) return true;
  return is(Keyword::End) && ahead().keyword == Keyword::If;
}

void Parser::statement_end() {
  if (!at_statement_end()) fail(syntax::kExpectedEndOfStatement);
}

void Parser::skip_separators() {
  while (is(TokenKind::NewLine) || is(TokenKind::Colon)) ++at_;
}

NameId Parser::identifier() {
  if (!is(TokenKind::Name) || reserved(here().keyword)) fail(syntax::kExpectedIdentifier);
  const NameId name = tree_->names.id(here().text);
  ++at_;
  return name;
}

void Parser::fail(const KnownError& error, Position where) const {
  throw SyntaxError(error, place_in(source_, where.piece, where.offset));
}

Statement& Parser::add(Block& out, Statement::Kind kind) {
  Statement& statement = tree_->statements.emplace_back();
  statement.kind = kind;
  statement.position = position();
  out.push_back(&statement);
  return statement;
}

}  // namespace rk::vbscript
