#include "vbscript/regexp_object.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "value/conversions.h"
#include "value/object.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk::vbscript {

namespace {

using platform::RegexpMatch;

template <std::size_t N>
MemberId named(const std::array<std::string_view, N>& names, std::string_view name) {
  for (std::size_t i = 0; i < N; ++i) {
    if (equal_ignoring_case(name, names[i])) return static_cast<MemberId>(i);
  }
  return kNoMember;
}

void check_reads(CallKind kind) {
  if (kind == CallKind::Let || kind == CallKind::Set) raise(errors::kNoSuchMember);
}

Value text_of(std::u16string_view units) {
  return Value::text(Text::from_units(units));
}

Value number_of(std::size_t number) {
  return Value::long_integer(static_cast<std::int32_t>(number));
}

// Values in a row, walked by For Each.
class Items final : public Enumeration {
 public:
  explicit Items(std::vector<Value> items) : items_(std::move(items)) {}
  bool next(Value& item) override {
    if (at_ == items_.size()) return false;
    item = items_[at_++];
    return true;
  }

 private:
  std::vector<Value> items_;
  std::size_t at_ = 0;
};

// A collection with Item and Count.
class Row final : public Object {
 public:
  Row(std::string_view type_name, std::vector<Value> items)
      : type_name_(type_name), items_(std::move(items)) {}

  std::string_view type_name() const override { return type_name_; }
  MemberId member(std::string_view name) const override { return named(kNames, name); }
  const void* member_table() const override { return &kNames; }
  Value invoke(MemberId id, CallKind kind, Arguments arguments) override {
    check_reads(kind);
    if (id == 1) return number_of(items_.size());
    if (arguments.size() != 1) raise(errors::kWrongArgumentCount);
    const std::int32_t index = to_long(*arguments[0]);
    if (index < 0 || static_cast<std::size_t>(index) >= items_.size()) raise(errors::kInvalidCall);
    return items_[static_cast<std::size_t>(index)];
  }
  std::unique_ptr<Enumeration> enumerate() override { return std::make_unique<Items>(items_); }
  void add_held(HeldMemory& held) const override {
    held.bytes += items_.capacity() * sizeof(Value);
    for (const Value& item : items_) held.values.push_back(&item);
  }

 private:
  static constexpr std::array<std::string_view, 2> kNames{"Item", "Count"};
  std::string_view type_name_;
  std::vector<Value> items_;
};

class Match final : public Object {
 public:
  Match(std::size_t first, std::size_t length, Value text, std::vector<Value> groups)
      : first_(first),
        length_(length),
        text_(std::move(text)),
        groups_(Value::object(make_ref<Row>("ISubMatches", std::move(groups)))) {}

  std::string_view type_name() const override { return "IMatch2"; }
  MemberId member(std::string_view name) const override { return named(kNames, name); }
  const void* member_table() const override { return &kNames; }
  Value invoke(MemberId id, CallKind kind, Arguments arguments) override {
    check_reads(kind);
    if (id == 3 && !arguments.empty()) {
      return groups_.as_object()->invoke(kDefaultMember, CallKind::Get, arguments);
    }
    if (!arguments.empty()) raise(errors::kWrongArgumentCount);
    switch (id) {
      case 1:
        return number_of(first_);
      case 2:
        return number_of(length_);
      case 3:
        return groups_;
      default:
        return text_;
    }
  }
  void add_held(HeldMemory& held) const override {
    held.bytes += sizeof(Match);
    held.values.insert(held.values.end(), {&text_, &groups_});
  }

 private:
  static constexpr std::array<std::string_view, 4> kNames{"Value", "FirstIndex", "Length",
                                                          "SubMatches"};
  std::size_t first_;
  std::size_t length_;
  Value text_;
  Value groups_;
};

class RegExp final : public Object {
 public:
  explicit RegExp(const platform::Regexps& factory) : factory_(factory) {}

  std::string_view type_name() const override { return "IRegExp2"; }
  MemberId member(std::string_view name) const override { return named(kNames, name); }
  const void* member_table() const override { return &kNames; }
  Value invoke(MemberId id, CallKind kind, Arguments arguments) override;

 private:
  enum Member : MemberId { kPattern, kIgnoreCase, kGlobal, kMultiline, kExecute, kTest, kReplace };
  static constexpr std::array<std::string_view, 7> kNames{
      "Pattern", "IgnoreCase", "Global", "Multiline", "Execute", "Test", "Replace"};

  Value property(MemberId id, CallKind kind, Arguments arguments);
  std::shared_ptr<const platform::Regexp> compiled();
  Value execute(const std::u16string& subject);
  Value replace(const std::u16string& subject, const Value& replacement);
  template <class Found>
  void each_match(const std::u16string& subject, Found found);

  const platform::Regexps& factory_;
  Text pattern_;
  bool ignore_case_ = false;
  bool global_ = false;
  bool multiline_ = false;
  std::shared_ptr<const platform::Regexp> compiled_;
};

Value RegExp::invoke(MemberId id, CallKind kind, Arguments arguments) {
  if (id <= kMultiline) return property(id, kind, arguments);
  check_reads(kind);
  if (arguments.size() != (id == kReplace ? 2U : 1U)) raise(errors::kWrongArgumentCount);
  const std::u16string subject = to_text(*arguments[0]).units();
  if (id == kTest) return Value::boolean(compiled()->match(subject, 0).has_value());
  if (id == kExecute) return execute(subject);
  return replace(subject, *arguments[1]);
}

Value RegExp::property(MemberId id, CallKind kind, Arguments arguments) {
  if (kind == CallKind::Set) raise(errors::kNoSuchMember);
  const bool assigns = kind == CallKind::Let;
  if (arguments.size() != (assigns ? 1U : 0U)) raise(errors::kWrongArgumentCount);
  bool* const flag = id == kIgnoreCase ? &ignore_case_ : id == kGlobal ? &global_ : &multiline_;
  if (!assigns) return id == kPattern ? Value::text(pattern_) : Value::boolean(*flag);
  if (id == kPattern) {
    pattern_ = to_text(*arguments[0]);
  } else {
    *flag = to_boolean(*arguments[0]);
  }
  compiled_ = nullptr;  // last: reading what is assigned may run script that searches
  return Value();
}

std::shared_ptr<const platform::Regexp> RegExp::compiled() {
  if (!compiled_) {
    compiled_ =
        factory_.compile(pattern_.units(), {.ignore_case = ignore_case_, .multiline = multiline_});
  }
  return compiled_;
}

// The first match, or all of them; behind an empty one the search goes on a unit later.
template <class Found>
void RegExp::each_match(const std::u16string& subject, Found found) {
  // Held: a procedure that makes the replacement may assign another pattern.
  const std::shared_ptr<const platform::Regexp> regexp = compiled();
  std::size_t from = 0;
  while (from <= subject.size()) {
    const std::optional<RegexpMatch> match = regexp->match(subject, from);
    if (!match) return;
    const RegexpMatch::Stretch whole = *match->stretches[0];
    found(*match);
    if (!global_) return;
    from = whole.start + std::max<std::size_t>(whole.length, 1);
  }
}

Value group_text(const std::u16string& subject, const std::optional<RegexpMatch::Stretch>& group) {
  if (!group) return Value();
  return text_of(std::u16string_view(subject).substr(group->start, group->length));
}

Value RegExp::execute(const std::u16string& subject) {
  std::vector<Value> matches;
  each_match(subject, [&](const RegexpMatch& match) {
    std::vector<Value> groups;
    for (std::size_t i = 1; i < match.stretches.size(); ++i) {
      groups.push_back(group_text(subject, match.stretches[i]));
    }
    const RegexpMatch::Stretch whole = *match.stretches[0];
    matches.push_back(Value::object(
        make_ref<Match>(whole.start, whole.length, group_text(subject, whole), std::move(groups))));
  });
  return Value::object(make_ref<Row>("IMatchCollection2", std::move(matches)));
}

// $1 to $99, $& (the match), $` (what is before), $' (what is behind), $$.
void expand(std::u16string& out, const std::u16string& subject, const RegexpMatch& match,
            const std::u16string& with) {
  const auto append = [&](const std::optional<RegexpMatch::Stretch>& group) {
    if (group) out.append(subject, group->start, group->length);
  };
  const auto digit = [&](std::size_t at) {
    return at < with.size() && with[at] >= u'0' && with[at] <= u'9' ? with[at] - u'0' : -1;
  };
  const RegexpMatch::Stretch whole = *match.stretches[0];
  for (std::size_t i = 0; i < with.size(); ++i) {
    const char16_t next = with[i] == u'$' && i + 1 < with.size() ? with[i + 1] : u'\0';
    if (next == u'$') {
      out += u'$';
    } else if (next == u'&') {
      append(whole);
    } else if (next == u'`') {
      out.append(subject, 0, whole.start);
    } else if (next == u'\'') {
      out.append(subject, whole.start + whole.length);
    } else if (next != u'\0' && digit(i + 1) >= 0) {
      auto number = static_cast<std::size_t>(digit(i + 1));
      std::size_t length = 1;
      if (digit(i + 2) >= 0) {
        const std::size_t longer = number * 10 + static_cast<std::size_t>(digit(i + 2));
        if (longer > 0 && longer < match.stretches.size()) {
          number = longer;
          length = 2;
        }
      }
      if (number == 0 || number >= match.stretches.size()) {
        out += with[i];
        continue;
      }
      append(match.stretches[number]);
      i += length;
      continue;
    } else {
      out += with[i];
      continue;
    }
    ++i;
  }
}

Value RegExp::replace(const std::u16string& subject, const Value& replacement) {
  // A copy: the procedure that is called may assign the variable behind the argument.
  const Value value = replacement;  // NOLINT(performance-unnecessary-copy-initialization)
  // A procedure by GetRef is called with the match, its groups, its place and the whole text.
  Object* const called = value.is_object() ? value.as_object() : nullptr;
  const std::u16string with = called == nullptr ? to_text(value).units() : std::u16string();
  std::u16string out;
  std::size_t done = 0;
  each_match(subject, [&](const RegexpMatch& match) {
    const RegexpMatch::Stretch whole = *match.stretches[0];
    out.append(subject, done, whole.start - done);
    done = whole.start + whole.length;
    if (called == nullptr) {
      expand(out, subject, match, with);
      return;
    }
    std::vector<Value> values;
    for (const auto& group : match.stretches) values.push_back(group_text(subject, group));
    values.push_back(number_of(whole.start));
    values.push_back(text_of(subject));
    std::vector<Value*> pointers;
    for (Value& v : values) pointers.push_back(&v);
    out += joined_text(called->invoke(kDefaultMember, CallKind::Get, pointers)).units();
  });
  out.append(subject, done);
  return text_of(out);
}

}  // namespace

Value regexp_object(const Services& services) {
  if (services.regexps == nullptr) raise(errors::kCannotCreateObject);
  return Value::object(make_ref<RegExp>(*services.regexps));
}

}  // namespace rk::vbscript
