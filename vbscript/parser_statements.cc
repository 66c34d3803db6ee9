#include "vbscript/parser.h"
#include "vbscript/syntax_errors.h"

namespace rk::vbscript {

Block Parser::block(std::initializer_list<Keyword> ends) {
  Block out;
  while (true) {
    skip_separators();
    if (is(TokenKind::EndOfSource) || at_block_end(ends)) return out;
    statement(out);
  }
}

bool Parser::at_block_end(std::initializer_list<Keyword> ends) const {
  if (!is(TokenKind::Name)) return false;
  return std::find(ends.begin(), ends.end(), here().keyword) != ends.end();
}

void Parser::statement(Block& out) {
  const Deeper deeper(*this);
  if (is(TokenKind::WriteLiteral)) {
    add(out, Statement::Kind::WriteLiteral).literal = here().value;
    ++at_;
  } else if (is(TokenKind::WriteValue)) {
    write_value(out);
  } else if (is(TokenKind::WithDot)) {
    assignment_or_call(out);
  } else if (!is(TokenKind::Name)) {
    fail(is(TokenKind::Constant) ? syntax::kExpectedStatement : syntax::kSyntaxError);
  } else if (is(Keyword::Property) && ahead().kind == TokenKind::Name &&
             ahead(2).kind == TokenKind::Name) {
    fail(syntax::kInsideClass);
  } else if (is(Keyword::Erase) &&
             (ahead().kind == TokenKind::Name || ahead().kind == TokenKind::Open)) {
    erase_statement(out);
  } else if (reserved(here().keyword) && !is(Keyword::Me)) {
    keyword_statement(out);
  } else {
    assignment_or_call(out);
  }
  statement_end();
}

void Parser::keyword_statement(Block& out) {
  switch (here().keyword) {
    case Keyword::If:
      return if_statement(out);
    case Keyword::Select:
      return select_statement(out);
    case Keyword::For:
      return for_statement(out);
    case Keyword::Do:
      return do_statement(out);
    case Keyword::While:
      return while_statement(out);
    case Keyword::With:
      return with_statement(out);
    case Keyword::Exit:
      return exit_statement(out);
    case Keyword::On:
      return on_error(out);
    case Keyword::Set:
      return set_statement(out);
    case Keyword::Call:
      return call_statement(out);
    case Keyword::Dim:
      return dim_statement(out);
    case Keyword::ReDim:
      return redim_statement(out);
    case Keyword::Const:
      ++at_;
      return const_statement(out);
    case Keyword::Stop:
      add(out, Statement::Kind::Stop);
      ++at_;
      return;
    case Keyword::Loop:
      fail(syntax::kLoopWithoutDo);
    case Keyword::Next:
      fail(syntax::kUnexpectedNext);
    case Keyword::Sub:
    case Keyword::Function:
    case Keyword::Class:
    case Keyword::Private:
    case Keyword::Public:
    case Keyword::Option:
      fail(syntax::kSyntaxError);
    default:
      fail(syntax::kExpectedStatement);
  }
}

void Parser::write_value(Block& out) {
  Statement& s = add(out, Statement::Kind::WriteValue);
  ++at_;
  s.value = expression();
}

// --- If ---------------------------------------------------------------------------------------

void Parser::if_statement(Block& out) {
  Statement& s = add(out, Statement::Kind::If);
  ++at_;
  CaseBranch branch;
  branch.position = s.position;
  branch.tests.push_back(expression());
  expect(Keyword::Then, syntax::kExpectedThen);
  s.branches.push_back(std::move(branch));
  const std::size_t behind_then = at_;
  while (is(TokenKind::Colon)) ++at_;
  if (is(TokenKind::NewLine)) return block_if(s);
  at_ = behind_then;
  inline_if(s);
}

void Parser::block_if(Statement& s) {
  s.branches.back().body = block({Keyword::ElseIf, Keyword::Else, Keyword::End});
  while (true) {
    CaseBranch branch;
    branch.position = position();
    if (accept(Keyword::ElseIf)) {
      branch.tests.push_back(expression());
      expect(Keyword::Then, syntax::kExpectedThen);
      branch.body = block({Keyword::ElseIf, Keyword::Else, Keyword::End});
    } else if (accept(Keyword::Else)) {
      branch.body = block({Keyword::End});
      s.branches.push_back(std::move(branch));
      break;
    } else {
      break;
    }
    s.branches.push_back(std::move(branch));
  }
  s.end = position();
  expect(Keyword::End, syntax::kExpectedEnd);
  expect(Keyword::If, syntax::kExpectedIf);
}

// The line form: statements between colons up to the line's end, with Else in the same line. A
// closing End If may stand there or not.
void Parser::inline_if(Statement& s) {
  s.branches.back().body = inline_block();
  while (is(Keyword::ElseIf)) {
    CaseBranch branch;
    branch.position = position();
    ++at_;
    branch.tests.push_back(expression());
    expect(Keyword::Then, syntax::kExpectedThen);
    branch.body = inline_block();
    s.branches.push_back(std::move(branch));
  }
  if (is(Keyword::Else)) {
    CaseBranch branch;
    branch.position = position();
    ++at_;
    branch.body = inline_block();
    s.branches.push_back(std::move(branch));
  }
  s.end = position();
  if (is(Keyword::End) && ahead().keyword == Keyword::If) at_ += 2;
}

Block Parser::inline_block() {
  Block out;
  while (true) {
    while (is(TokenKind::Colon)) ++at_;
    if (at_statement_end()) return out;
    statement(out);
    if (!is(TokenKind::Colon)) return out;
  }
}

// --- Select -----------------------------------------------------------------------------------

void Parser::select_statement(Block& out) {
  Statement& s = add(out, Statement::Kind::Select);
  ++at_;
  expect(Keyword::Case, syntax::kExpectedCase);
  s.target = expression();
  statement_end();
  skip_blank_text();
  while (is(Keyword::Case)) case_branch(s);
  s.end = position();
  if (!accept(Keyword::End))
    fail(s.branches.empty() ? syntax::kExpectedCase : syntax::kExpectedEnd);
  expect(Keyword::Select, syntax::kExpectedSelect);
}

// Between Select and the first Case.
void Parser::skip_blank_text() {
  skip_separators();
  while (at_blank_text()) {
    ++at_;
    skip_separators();
  }
}

void Parser::case_branch(Statement& s) {
  CaseBranch branch;
  branch.position = position();
  ++at_;
  if (!accept(Keyword::Else)) {
    do branch.tests.push_back(expression());
    while (accept(TokenKind::Comma));
  }
  branch.body = block({Keyword::Case, Keyword::End});
  s.branches.push_back(std::move(branch));
}

// --- loops ------------------------------------------------------------------------------------

void Parser::for_statement(Block& out) {
  Statement& s = add(out, Statement::Kind::For);
  ++at_;
  if (accept(Keyword::Each)) {
    s.kind = Statement::Kind::ForEach;
    for_each(s);
  } else {
    for_counted(s);
  }
  statement_end();
  enclosing_.loops_for.push_back(s.target->name);
  s.body = block({Keyword::Next});
  enclosing_.loops_for.pop_back();
  s.end = position();
  expect(Keyword::Next, syntax::kExpectedNext);
}

void Parser::for_each(Statement& s) {
  s.target = loop_variable();
  expect(Keyword::In, syntax::kExpectedIn);
  s.value = expression();
}

void Parser::for_counted(Statement& s) {
  s.target = loop_variable();
  expect(TokenKind::Equal, syntax::kExpectedEquals);
  s.value = expression();
  expect(Keyword::To, syntax::kExpectedTo);
  s.limit = expression();
  if (accept(Keyword::Step)) s.step = expression();
}

const Expression* Parser::loop_variable() {
  if (!is(TokenKind::Name) || reserved(here().keyword)) fail(syntax::kExpectedIdentifier);
  const Token& token = here();
  ++at_;
  if (is(TokenKind::Dot) || is(TokenKind::Open)) fail(syntax::kInvalidForVariable);
  const Expression* const name = name_expression(token);
  const std::vector<NameId>& outer = enclosing_.loops_for;
  if (std::find(outer.begin(), outer.end(), name->name) != outer.end()) {
    fail(syntax::kInvalidForVariable, name->position);
  }
  return name;
}

void Parser::do_statement(Block& out) {
  Statement& s = add(out, Statement::Kind::Do);
  ++at_;
  loop_test(s);
  if (!at_statement_end()) fail(syntax::kExpectedWhileUntilOrEnd);
  ++enclosing_.loops_do;
  s.body = block({Keyword::Loop});
  --enclosing_.loops_do;
  s.end = position();
  expect(Keyword::Loop, syntax::kExpectedLoop);
  if (s.test == Statement::Test::None && loop_test(s)) s.test_at_end = true;
  if (!at_statement_end()) fail(syntax::kExpectedWhileUntilOrEnd);
}

bool Parser::loop_test(Statement& s) {
  if (is(Keyword::While)) {
    s.test = Statement::Test::While;
  } else if (is(Keyword::Until)) {
    s.test = Statement::Test::Until;
  } else {
    return false;
  }
  ++at_;
  s.value = expression();
  return true;
}

void Parser::while_statement(Block& out) {
  Statement& s = add(out, Statement::Kind::Do);
  ++at_;
  s.is_while = true;
  s.test = Statement::Test::While;
  s.value = expression();
  statement_end();
  s.body = block({Keyword::WEnd});
  s.end = position();
  expect(Keyword::WEnd, syntax::kExpectedWend);
}

void Parser::with_statement(Block& out) {
  Statement& s = add(out, Statement::Kind::With);
  ++at_;
  s.value = expression();
  statement_end();
  s.body = block({Keyword::End});
  s.end = position();
  expect(Keyword::End, syntax::kExpectedEnd);
  expect(Keyword::With, syntax::kExpectedWith);
}

// --- simple statements ------------------------------------------------------------------------

void Parser::exit_statement(Block& out) {
  Statement& s = add(out, Statement::Kind::Exit);
  ++at_;
  const bool in_property = enclosing_.in_procedure &&
                           enclosing_.procedure != Procedure::Kind::Sub &&
                           enclosing_.procedure != Procedure::Kind::Function;
  const auto in = [&](Procedure::Kind kind) {
    return enclosing_.in_procedure && enclosing_.procedure == kind;
  };
  bool allowed = false;
  if (is(Keyword::Do)) {
    s.exit = Statement::ExitKind::Do;
    allowed = enclosing_.loops_do > 0;
  } else if (is(Keyword::For)) {
    s.exit = Statement::ExitKind::For;
    allowed = !enclosing_.loops_for.empty();
  } else if (is(Keyword::Sub)) {
    allowed = in(Procedure::Kind::Sub);
  } else if (is(Keyword::Function)) {
    s.exit = Statement::ExitKind::Function;
    allowed = in(Procedure::Kind::Function);
  } else if (is(Keyword::Property)) {
    s.exit = Statement::ExitKind::Property;
    allowed = in_property;
  }
  if (!allowed) fail(syntax::kInvalidExit);
  ++at_;
}

void Parser::on_error(Block& out) {
  Statement& s = add(out, Statement::Kind::OnError);
  ++at_;
  expect(Keyword::Error, syntax::kSyntaxError);
  if (accept(Keyword::Resume)) {
    expect(Keyword::Next, syntax::kExpectedNext);
    s.resume_next = true;
    return;
  }
  expect(Keyword::GoTo, syntax::kSyntaxError);
  const bool zero = is(TokenKind::Constant) && here().value.kind() == Value::Kind::Integer &&
                    here().value.as_integer() == 0;
  if (!zero) fail(syntax::kSyntaxError);
  ++at_;
}

void Parser::option_explicit(Block& out) {
  add(out, Statement::Kind::OptionExplicit);
  ++at_;
  expect(Keyword::Explicit, syntax::kSyntaxError);
  statement_end();
  tree_->option_explicit = true;
}

void Parser::set_statement(Block& out) {
  Statement& s = add(out, Statement::Kind::SetAssign);
  ++at_;
  if (!is(TokenKind::Name) && !is(TokenKind::WithDot)) fail(syntax::kExpectedIdentifier);
  if (is(TokenKind::Name) && reserved(here().keyword) && !is(Keyword::Me)) {
    fail(syntax::kExpectedIdentifier);
  }
  s.target = primary();
  expect(TokenKind::Equal, syntax::kExpectedEquals);
  s.value = expression();
}

void Parser::call_statement(Block& out) {
  Statement& s = add(out, Statement::Kind::Call);
  ++at_;
  if (!is(TokenKind::Name) && !is(TokenKind::WithDot)) fail(syntax::kExpectedIdentifier);
  const Expression* target = primary();
  if (target->kind == Expression::Kind::Call) {
    s.arguments = target->arguments;
    target = target->left;
  }
  s.target = target;
}

void Parser::erase_statement(Block& out) {
  ++at_;
  do {
    Statement& s = add(out, Statement::Kind::Erase);
    s.target = expression();
  } while (accept(TokenKind::Comma));
}

void Parser::redim_statement(Block& out) {
  Statement& s = add(out, Statement::Kind::ReDim);
  ++at_;
  s.preserve = accept(Keyword::Preserve);
  do {
    Declarator d;
    d.position = position();
    if (!is(TokenKind::WithDot) && !is(Keyword::Me) &&
        (!is(TokenKind::Name) || reserved(here().keyword))) {
      fail(syntax::kExpectedIdentifier);
    }
    const Expression* array = primary();
    if (array->kind != Expression::Kind::Call) fail(syntax::kExpectedOpen);
    if (array->arguments.empty()) fail(syntax::kExpectedExpression);
    d.target = array->left;
    d.redim_bounds = array->arguments;
    s.declarators.push_back(std::move(d));
  } while (accept(TokenKind::Comma));
}

// A target with "=" behind it is assigned; else it is called, and what follows up to the
// statement's end is its arguments.
void Parser::assignment_or_call(Block& out) {
  Statement& s = add(out, Statement::Kind::Call);
  const Expression* target = primary();
  s.target = target;
  if (accept(TokenKind::Equal)) {
    s.kind = Statement::Kind::Assign;
    s.value = expression();
    return;
  }
  const bool brackets_last = target->kind == Expression::Kind::Call;
  if (!at_statement_end()) {
    call_without_brackets(s);
  } else if (brackets_last) {
    if (target->arguments.size() > 1) fail(syntax::kNoParentheses);
    s.target = target->left;
    for (const Expression* argument : target->arguments) {
      Expression& brackets = make(Expression::Kind::Brackets, argument->position);
      brackets.left = argument;
      s.arguments.push_back(argument->kind == Expression::Kind::Missing ? argument : &brackets);
    }
  }
}

// In `f (a) * b, c` the brackets turn out to belong to the first argument.
void Parser::call_without_brackets(Statement& s) {
  if (s.target->kind == Expression::Kind::Call) {
    const Position open = s.target->position;
    s.target = s.target->left;
    while (position().offset != open.offset || position().piece != open.piece) --at_;
  }
  s.arguments = argument_list();
}

}  // namespace rk::vbscript
