#include <algorithm>
#include <array>
#include <string>

#include "value/text.h"
#include "vbscript/token.h"

namespace rk::vbscript {

namespace {

struct Word {
  std::string_view text;
  Keyword keyword;
};

// In the order of their texts.
constexpr std::array kWords{
    Word{"and", Keyword::And},
    Word{"byref", Keyword::ByRef},
    Word{"byval", Keyword::ByVal},
    Word{"call", Keyword::Call},
    Word{"case", Keyword::Case},
    Word{"class", Keyword::Class},
    Word{"const", Keyword::Const},
    Word{"default", Keyword::Default},
    Word{"dim", Keyword::Dim},
    Word{"do", Keyword::Do},
    Word{"each", Keyword::Each},
    Word{"else", Keyword::Else},
    Word{"elseif", Keyword::ElseIf},
    Word{"empty", Keyword::Empty},
    Word{"end", Keyword::End},
    Word{"eqv", Keyword::Eqv},
    Word{"erase", Keyword::Erase},
    Word{"error", Keyword::Error},
    Word{"exit", Keyword::Exit},
    Word{"explicit", Keyword::Explicit},
    Word{"false", Keyword::False},
    Word{"for", Keyword::For},
    Word{"function", Keyword::Function},
    Word{"get", Keyword::Get},
    Word{"goto", Keyword::GoTo},
    Word{"if", Keyword::If},
    Word{"imp", Keyword::Imp},
    Word{"in", Keyword::In},
    Word{"is", Keyword::Is},
    Word{"let", Keyword::Let},
    Word{"loop", Keyword::Loop},
    Word{"me", Keyword::Me},
    Word{"mod", Keyword::Mod},
    Word{"new", Keyword::New},
    Word{"next", Keyword::Next},
    Word{"not", Keyword::Not},
    Word{"nothing", Keyword::Nothing},
    Word{"null", Keyword::Null},
    Word{"on", Keyword::On},
    Word{"option", Keyword::Option},
    Word{"or", Keyword::Or},
    Word{"preserve", Keyword::Preserve},
    Word{"private", Keyword::Private},
    Word{"property", Keyword::Property},
    Word{"public", Keyword::Public},
    Word{"redim", Keyword::ReDim},
    Word{"rem", Keyword::Rem},
    Word{"resume", Keyword::Resume},
    Word{"select", Keyword::Select},
    Word{"set", Keyword::Set},
    Word{"step", Keyword::Step},
    Word{"stop", Keyword::Stop},
    Word{"sub", Keyword::Sub},
    Word{"then", Keyword::Then},
    Word{"to", Keyword::To},
    Word{"true", Keyword::True},
    Word{"until", Keyword::Until},
    Word{"wend", Keyword::WEnd},
    Word{"while", Keyword::While},
    Word{"with", Keyword::With},
    Word{"xor", Keyword::Xor},
};

constexpr std::size_t kLongestWord = 8;

}  // namespace

Keyword keyword_of(std::string_view word) {
  if (word.size() > kLongestWord) return Keyword::None;
  const std::string lowered = lowered_ascii(word);
  const auto* at =
      std::lower_bound(kWords.begin(), kWords.end(), std::string_view(lowered),
                       [](const Word& w, std::string_view text) { return w.text < text; });
  return at != kWords.end() && at->text == lowered ? at->keyword : Keyword::None;
}

}  // namespace rk::vbscript
