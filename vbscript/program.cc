#include "vbscript/program.h"

#include "vbscript/compiler.h"
#include "vbscript/names.h"
#include "vbscript/parser.h"
#include "vbscript/unit.h"

namespace rk::vbscript {

Program::Program(std::shared_ptr<const Unit> unit) : unit_(std::move(unit)) {}
Program::~Program() = default;

bool Program::defines(std::string_view procedure) const {
  const auto at = unit_->names.find(folded_name(procedure));
  return at != unit_->names.end() && at->second.kind == Binding::Kind::Procedure;
}

const std::vector<std::string>& Program::files() const {
  return unit_->files;
}

std::shared_ptr<const Program> compile(const Source& source) {
  const std::unique_ptr<SyntaxTree> tree = Parser(source).script();
  return std::make_shared<const Program>(Compiler(source, *tree).unit());
}

std::shared_ptr<const Program> compile_script(std::string path, std::string text) {
  Source source;
  source.files.push_back(std::move(path));
  SourcePiece& piece = source.pieces.emplace_back();
  piece.text = std::move(text);
  return compile(source);
}

}  // namespace rk::vbscript
