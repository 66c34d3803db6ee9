#include "site/repeat.h"

#include <algorithm>
#include <cassert>

#include "site/tags.h"
#include "value/conversions.h"

namespace rk::site {

Repeat::Repeat(std::string_view item, std::span<const std::string_view> tags)
    : item_(item), tags_(tags), filled_by_(tags.size(), kNone) {
  cut_item();
}

void Repeat::append(const Value& text) {
  const std::size_t begin = contents_.size();
  append_text(contents_, text);
  steps_.push_back({Step::Kind::Append, kNone, begin, contents_.size() - begin});
}

void Repeat::fill(std::string_view tag, std::string_view content) {
  const std::size_t begin = contents_.size();
  contents_.append(content);
  add_fill(tag, begin);
}

void Repeat::fill(std::string_view tag, const Value& content) {
  const std::size_t begin = contents_.size();
  // QUIRK: a Null, or what has no text, loses the whole list up to here, not the tag alone.
  if (const auto text = text_if_any(content)) {
    contents_.append(text->view());
    add_fill(tag, begin);
  } else {
    steps_.push_back({Step::Kind::Empty, kNone, begin, 0});
  }
}

void Repeat::fill(std::string_view tag, platform::Recordset& rows, std::size_t ordinal) {
  const std::size_t begin = contents_.size();
  if (rows.append_field_text(ordinal, contents_)) {
    add_fill(tag, begin);
  } else {
    steps_.push_back({Step::Kind::Empty, kNone, begin, 0});
  }
}

void Repeat::next() {
  if (!write_straight()) write_step_by_step();
  for (const Step& step : steps_) {
    if (step.kind == Step::Kind::Fill) filled_by_[step.tag] = kNone;
  }
  steps_.clear();
  contents_.clear();
  expected_tag_ = 0;
}

Text Repeat::into(std::string_view block) {
  const std::string rows = list();
  std::vector<std::size_t> places;
  std::size_t at = item_.empty() ? std::string_view::npos : block.find(item_);
  for (; at != std::string_view::npos; at = block.find(item_, at + item_.size())) {
    places.push_back(at);
  }
  Text result;
  result.reserve(block.size() + places.size() * rows.size());
  std::size_t from = 0;
  for (const std::size_t place : places) {
    result.append(block.substr(from, place - from));
    result.append(rows);
    from = place + item_.size();
  }
  result.append(block.substr(from));
  return result;
}

std::string Repeat::list() {
  // OPTIMIZATION: a raw copy that holds a tag cannot lie in settled text, which holds none; it can
  // only begin so far before its end as the tag stands behind the copy's start.
  const bool has_tag = pieces_.front().tag != kNone;
  const std::size_t reach = has_tag ? pieces_.front().literal.size() : settled_.size();
  std::string tail = settled_.substr(settled_.size() - std::min(reach, settled_.size()));
  settled_.resize(settled_.size() - tail.size());
  tail.append(open_).append(item_);
  replace_all(tail, item_, {});
  return std::move(settled_.append(tail));
}

std::string Repeat::filled() {
  return std::move(settled_.append(open_));
}

// --- one row ------------------------------------------------------------------------------------

// Rows mostly fill their tags in one order, so the next tag is looked for first.
std::size_t Repeat::tag_number(std::string_view tag) {
  if (expected_tag_ < tags_.size() && tags_[expected_tag_] == tag) return expected_tag_++;
  const auto found = std::find(tags_.begin(), tags_.end(), tag);
  assert(found != tags_.end());
  expected_tag_ = static_cast<std::size_t>(found - tags_.begin()) + 1;
  return expected_tag_ - 1;
}

void Repeat::add_fill(std::string_view tag, std::size_t begin) {
  const std::size_t number = tag_number(tag);
  if (filled_by_[number] == kNone) filled_by_[number] = steps_.size();
  steps_.push_back({Step::Kind::Fill, number, begin, contents_.size() - begin});
}

std::string_view Repeat::content(const Step& step) const {
  return std::string_view(contents_).substr(step.begin, step.size);
}

// OPTIMIZATION: where all before is settled, the item is plain, and nothing inserted or appended
// holds a "{", the only tags are those of the item: it is written once, piece by piece.
bool Repeat::write_straight() {
  if (!straight_item_ || !open_.empty()) return false;
  if (contents_.find('{') != std::string::npos) return false;
  for (const Step& step : steps_) {
    if (step.kind == Step::Kind::Empty) return false;
  }
  for (const Piece& piece : pieces_) {
    if (piece.tag != kNone && filled_by_[piece.tag] == kNone) return false;
  }
  for (const Piece& piece : pieces_) {
    settled_.append(piece.literal);
    if (piece.tag != kNone) settled_.append(content(steps_[filled_by_[piece.tag]]));
  }
  for (const Step& step : steps_) {
    if (step.kind == Step::Kind::Append) settled_.append(content(step));
  }
  return true;
}

void Repeat::write_step_by_step() {
  open_.append(item_);
  for (const Step& step : steps_) {
    switch (step.kind) {
      case Step::Kind::Fill:
        site::fill(open_, tags_[step.tag], content(step));
        break;
      case Step::Kind::Append:
        open_.append(content(step));
        break;
      case Step::Kind::Empty:
        settled_.clear();
        open_.clear();
        break;
    }
  }
  const std::size_t done = settled_length(open_);
  settled_.append(open_, 0, done);
  open_.erase(0, done);
}

// --- what is settled ----------------------------------------------------------------------------

// The number of the tag that stands whole at a "{", or kNone.
std::size_t Repeat::tag_at(std::string_view text, std::size_t at) const {
  const std::string_view rest = text.substr(at + 1);
  for (std::size_t i = 0; i < tags_.size(); ++i) {
    const std::string_view tag = tags_[i];
    if (rest.size() > tag.size() && rest[tag.size()] == '}' && rest.starts_with(tag)) return i;
  }
  return kNone;
}

// Whether this text, which begins with "{", could grow into a tag.
bool Repeat::begins_tag(std::string_view rest) const {
  rest.remove_prefix(1);
  return std::any_of(tags_.begin(), tags_.end(),
                     [&](std::string_view tag) { return tag.starts_with(rest); });
}

// How far a text can change no more, whatever is filled and appended later: up to its first whole
// tag, or to the last "{" before that from which a tag could still grow.
std::size_t Repeat::settled_length(std::string_view text) const {
  std::size_t last_brace = std::string_view::npos;
  std::size_t end = text.size();
  for (std::size_t at = text.find('{'); at != std::string_view::npos; at = text.find('{', at + 1)) {
    if (tag_at(text, at) != kNone) {
      end = at;
      break;
    }
    last_brace = at;
  }
  if (last_brace == std::string_view::npos) return end;
  return begins_tag(text.substr(last_brace, end - last_brace)) ? last_brace : end;
}

void Repeat::cut_item() {
  straight_item_ = true;
  std::size_t from = 0;
  for (std::size_t at = item_.find('{'); at != std::string_view::npos;
       at = item_.find('{', at + 1)) {
    const std::size_t tag = tag_at(item_, at);
    if (tag == kNone) continue;
    const std::string_view literal = item_.substr(from, at - from);
    straight_item_ = straight_item_ && settled_length(literal) == literal.size();
    pieces_.push_back({literal, tag});
    from = at + tags_[tag].size() + 2;
  }
  pieces_.push_back({item_.substr(from), kNone});
  straight_item_ = straight_item_ && settled_length(item_.substr(from)) == item_.size() - from;
}

}  // namespace rk::site
