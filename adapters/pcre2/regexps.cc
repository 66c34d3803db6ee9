#include "adapters/pcre2/regexps.h"

#define PCRE2_CODE_UNIT_WIDTH 16
#include <pcre2.h>

#include <new>
#include <utility>

#include "value/script_error.h"

namespace rk::pcre2 {

namespace {

struct FreeCode {
  void operator()(pcre2_code* code) const { pcre2_code_free(code); }
};
struct FreeData {
  void operator()(pcre2_match_data* data) const { pcre2_match_data_free(data); }
};
struct FreeCompileContext {
  void operator()(pcre2_compile_context* context) const { pcre2_compile_context_free(context); }
};
struct FreeMatchContext {
  void operator()(pcre2_match_context* context) const { pcre2_match_context_free(context); }
};

using Code = std::unique_ptr<pcre2_code, FreeCode>;

// The page language's number for an error of the engine.
KnownError compile_error(int code) {
  switch (code) {
    case PCRE2_ERROR_QUANTIFIER_INVALID:
      return {5018, "Unexpected quantifier"};
    case PCRE2_ERROR_MISSING_SQUARE_BRACKET:
      return {5019, "Expected ']' in regular expression"};
    case PCRE2_ERROR_MISSING_CLOSING_PARENTHESIS:
    case PCRE2_ERROR_UNMATCHED_CLOSING_PARENTHESIS:
      return {5020, "Expected ')' in regular expression"};
    case PCRE2_ERROR_CLASS_RANGE_ORDER:
    case PCRE2_ERROR_CLASS_INVALID_RANGE:
      return {5021, "Invalid range in character set"};
    default:
      return {5017, "Syntax error in regular expression"};
  }
}

Code compiled(std::u16string_view pattern, platform::RegexpOptions options) {
  if (pattern.size() > kMaxPatternUnits) raise(errors::kOutOfMemory);
  const std::u16string text = translated(pattern, options.ignore_case);
  std::uint32_t flags = PCRE2_ALT_BSUX | PCRE2_DOLLAR_ENDONLY | PCRE2_MATCH_UNSET_BACKREF |
                        PCRE2_NEVER_UTF | PCRE2_NEVER_BACKSLASH_C;
  if (options.ignore_case) flags |= PCRE2_CASELESS;
  if (options.multiline) flags |= PCRE2_MULTILINE | PCRE2_ALT_CIRCUMFLEX;
  const std::unique_ptr<pcre2_compile_context, FreeCompileContext> context(
      pcre2_compile_context_create(nullptr));
  if (context == nullptr) throw std::bad_alloc();
  pcre2_set_newline(context.get(), PCRE2_NEWLINE_LF);
  int error = 0;
  PCRE2_SIZE where = 0;
  Code code(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(), flags, &error,
                          &where, context.get()));
  if (code == nullptr) raise(compile_error(error));
  // Where the engine cannot make machine code, it interprets the same expression.
  pcre2_jit_compile(code.get(), PCRE2_JIT_COMPLETE);
  return code;
}

class Regexp final : public platform::Regexp {
 public:
  explicit Regexp(Code code) : code_(std::move(code)) {}

  std::optional<platform::RegexpMatch> match(std::u16string_view subject,
                                             std::size_t from) const override {
    const std::unique_ptr<pcre2_match_data, FreeData> data(
        pcre2_match_data_create_from_pattern(code_.get(), nullptr));
    const std::unique_ptr<pcre2_match_context, FreeMatchContext> context(
        pcre2_match_context_create(nullptr));
    if (data == nullptr || context == nullptr) throw std::bad_alloc();
    pcre2_set_match_limit(context.get(), kMatchLimit);
    pcre2_set_heap_limit(context.get(), kHeapLimitKiB);
    int count = run(subject, from, 0, data.get(), context.get());
    // The engine's machine code has a small stack of its own; its interpreter uses the heap.
    if (count == PCRE2_ERROR_JIT_STACKLIMIT) {
      count = run(subject, from, PCRE2_NO_JIT, data.get(), context.get());
    }
    if (count == PCRE2_ERROR_NOMATCH) return std::nullopt;
    if (count < 0) raise(errors::kOutOfStack);
    return found(data.get());
  }

 private:
  int run(std::u16string_view subject, std::size_t from, std::uint32_t options,
          pcre2_match_data* data, pcre2_match_context* context) const {
    return pcre2_match(code_.get(), reinterpret_cast<PCRE2_SPTR>(subject.data()), subject.size(),
                       from, options, data, context);
  }

  static platform::RegexpMatch found(pcre2_match_data* data) {
    platform::RegexpMatch match;
    const PCRE2_SIZE* const offsets = pcre2_get_ovector_pointer(data);
    const std::uint32_t count = pcre2_get_ovector_count(data);
    for (std::uint32_t i = 0; i < count; ++i) {
      const PCRE2_SIZE begin = offsets[2 * i];
      const PCRE2_SIZE end = offsets[2 * i + 1];
      if (begin == PCRE2_UNSET || end < begin) {
        match.stretches.emplace_back();
      } else {
        match.stretches.push_back(platform::RegexpMatch::Stretch{begin, end - begin});
      }
    }
    return match;
  }

  Code code_;
};

}  // namespace

std::shared_ptr<const platform::Regexp> Regexps::compile(std::u16string_view pattern,
                                                         platform::RegexpOptions options) const {
  return std::make_shared<Regexp>(compiled(pattern, options));
}

}  // namespace rk::pcre2
