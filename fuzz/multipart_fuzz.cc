// Any bytes as the body of an upload, read by a page in the manner of upload classes: bytes cut
// with InStrB and MidB, texts and files through streams, fields in a dictionary. Whatever comes,
// the page ends. Where the first byte is odd the rest describes a form, whose fields and files must
// come out as they were put in.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/codepage/code_pages.h"
#include "fuzz/checks.h"
#include "pagehost/components/components.h"
#include "pagehost/pages/page_host.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/fixed_random.h"
#include "value/script_error.h"

namespace {

using rk::fuzz::must;
using rk::platform::FileStamp;

constexpr std::string_view kBoundary = "----form7d33a816d302b6";
constexpr std::size_t kMostBytes = 2048;  // the page looks at each byte of a file
constexpr std::string_view kPage = R"(<%@ CodePage=936 %><%
Option Explicit
Dim whole, fields, data, mark, gap, place, body, finish, size, head, name, file, count, copy, key
Function TextOf(start, length)
  Dim text
  Set text = Server.CreateObject("ADODB.Stream")
  text.Type = 1
  text.Mode = 3
  text.Open
  whole.Position = start - 1
  If length > 0 Then whole.CopyTo text, length
  text.Position = 0
  text.Type = 2
  text.Charset = "gb2312"
  TextOf = text.ReadText
  text.Close
End Function
Function Quoted(word)
  Dim from, last
  Quoted = ""
  from = InStr(1, head, word & "=""", 1)
  If from = 0 Then Exit Function
  from = from + Len(word) + 2
  last = InStr(from, head, """")
  If last > 0 Then Quoted = Mid(head, from, last - from)
End Function
Function SumOf(start, length)
  Dim i, sum
  sum = 0
  For i = start To start + length - 1
    sum = (sum * 31 + AscB(MidB(data, i, 1))) Mod 65521
  Next
  SumOf = sum
End Function
Set fields = Server.CreateObject("Scripting.Dictionary")
Set whole = Server.CreateObject("ADODB.Stream")
whole.Type = 1
whole.Mode = 3
whole.Open
Do While whole.Size < Request.TotalBytes
  whole.Write Request.BinaryRead(256)
Loop
If whole.Size = 0 Then Response.End
whole.Position = 0
data = whole.Read
gap = ChrB(13) & ChrB(10)
place = InStrB(1, data, gap)
If place < 2 Then Response.End
mark = LeftB(data, place - 1)
gap = gap & gap
place = place + 2
count = 0
Do While place < LenB(data)
  body = InStrB(place, data, gap)
  If body = 0 Then Exit Do
  head = TextOf(place, body - place)
  body = body + 4
  finish = InStrB(body, data, mark)
  size = finish - 2 - body
  If finish = 0 Or size < 0 Then Exit Do
  name = Quoted(" name")
  file = Quoted("filename")
  If file = "" Then
    If fields.Exists(name) Then
      fields(name) = fields(name) & ", " & TextOf(body, size)
    Else
      fields.Add name, TextOf(body, size)
    End If
  Else
    count = count + 1
    Set copy = Server.CreateObject("ADODB.Stream")
    copy.Type = 1
    copy.Open
    whole.Position = body - 1
    If size > 0 Then whole.CopyTo copy, size
    copy.SaveToFile Server.MapPath("up/" & count & ".bin"), 2
    copy.Close
    Response.Write "file " & name & " " & Mid(file, InStrRev(file, "\") + 1) & " " & size & " " & SumOf(body, size) & vbLf
  End If
  place = finish + LenB(mark) + 2
Loop
For Each key In fields
  Response.Write "field " & key & "=" & fields(key) & vbLf
Next
%>)";

// The page, and what it saves.
class Uploads final : public rk::platform::Files {
 public:
  std::map<std::string, std::string> saved;

  std::optional<std::string> find(std::string_view path) const override {
    if (path != "/site/a.asp" && saved.count(std::string(path)) == 0) return std::nullopt;
    return std::string(path);
  }
  std::optional<FileStamp> stamp(std::string_view path) const override {
    return find(path) ? std::optional(FileStamp{1, 1, 1}) : std::nullopt;
  }
  bool is_folder(std::string_view) const override { return false; }
  std::vector<std::string> names(std::string_view) const override { return {}; }
  std::string read(std::string_view path) const override {
    if (!find(path)) rk::raise(rk::errors::kFileNotFound);
    return path == "/site/a.asp" ? std::string(kPage) : saved.at(std::string(path));
  }
  std::string read_text(std::string_view path) const override { return read(path); }
  void write(std::string_view path, std::string_view bytes) override {
    saved[std::string(path)] = bytes;
  }
  void append(std::string_view, std::string_view) override {}
};

class NoLog final : public rk::pagehost::Log {
 public:
  void error(std::string_view) override {}
  void note(std::string_view) override {}
};

struct Host {
  Host() {
    rk::pagehost::add_components(programs);
    rk::pagehost::PageHostOptions options;
    options.site_root = "/site";
    options.page_code_page = rk::platform::kGb2312;
    rk::pagehost::PageHostParts parts;
    parts.files = &files;
    parts.code_pages = &code_pages;
    parts.clock = &clock;
    parts.random = &random;
    parts.programs = &programs;
    parts.log = &log;
    parts.make_database = [](const auto&) { return nullptr; };
    pages = std::make_unique<rk::pagehost::PageHost>(options, parts);
    pages->start();
  }
  rk::pagehost::PageAnswer answer(std::string body) {
    files.saved.clear();
    rk::pagehost::PageRequest request;
    request.method = "POST";
    request.path = "/a.asp";
    request.headers = {{"Host", "h"},
                       {"Content-Type", "multipart/form-data; boundary=" + std::string(kBoundary)}};
    request.body = std::move(body);
    return pages->run(request);
  }

  Uploads files;
  rk::codepage::IcuCodePages code_pages;
  rk::tests::FixedClock clock;
  rk::tests::FixedRandom random;
  NoLog log;
  rk::pagehost::Programs programs;
  std::unique_ptr<rk::pagehost::PageHost> pages;
};

// Takes a form out of an input's bytes, which end where they end.
class FormReader {
 public:
  explicit FormReader(std::string_view input) : input_(input) {}
  bool over() const { return input_.empty(); }
  std::size_t number() {
    if (input_.empty()) return 0;
    const auto byte = static_cast<unsigned char>(input_.front());
    input_.remove_prefix(1);
    return byte;
  }
  std::string bytes(std::size_t most) {
    const std::string out(input_.substr(0, std::min(number(), most)));
    input_.remove_prefix(std::min(out.size(), input_.size()));
    return out;
  }
  // Characters of GB2312, some of which hold bytes that mean something in ASCII.
  std::string text() {
    static constexpr std::string_view kCharacters[] = {
        "a",  "Z", "0",        " ",        "-",        "--",       "=",        "\r\n",
        "\n", ":", "\xD6\xD0", "\xCE\xC4", "\x81\x5C", "\xB0\x7C", "\x80\x22", "\xB0\xA1"};
    std::string out;
    for (std::size_t left = number() % 24; left > 0; --left)
      out += kCharacters[number() % std::size(kCharacters)];
    return out;
  }

 private:
  std::string_view input_;
};

struct Form {
  std::string body;
  std::string answer;                        // what the page says of it
  std::map<std::string, std::string> saved;  // and keeps of it
};

std::size_t sum_of(std::string_view bytes) {
  std::size_t sum = 0;
  for (const char c : bytes) sum = (sum * 31 + static_cast<unsigned char>(c)) % 65521;
  return sum;
}

void add_part(Form& form, std::string_view disposition, std::string_view bytes) {
  form.body.append("--").append(kBoundary).append("\r\nContent-Disposition: form-data; ");
  form.body.append(disposition).append("\r\n\r\n").append(bytes).append("\r\n");
}

Form form_of(FormReader reader) {
  Form form;
  std::string fields;
  std::size_t files = 0;
  for (std::size_t i = 0; i < 6 && !reader.over(); ++i) {
    const std::string name = "n" + std::to_string(i) + (reader.number() % 2 ? "\xD6\xD0" : "");
    if (reader.number() % 2 == 0) {
      const std::string text = reader.text();
      add_part(form, "name=\"" + name + "\"", text);
      fields += "field " + name + "=" + text + "\n";
      continue;
    }
    std::string bytes = reader.bytes(200);
    // Who makes a form chooses a mark that nothing in it holds.
    bytes.resize(std::min(bytes.find(kBoundary), bytes.size()));
    const std::string file = std::to_string(++files) + ".bin";
    add_part(form,
             "name=\"" + name + "\"; filename=\"C:\\\xCE\xC4\\" + file +
                 "\"\r\nContent-Type: application/octet-stream",
             bytes);
    form.saved["/site/up/" + file] = bytes;
    form.answer += "file " + name + " " + file + " " + std::to_string(bytes.size()) + " " +
                   std::to_string(sum_of(bytes)) + "\n";
  }
  form.body.append("--").append(kBoundary).append("--\r\n");
  form.answer += fields;
  return form;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Host host;
  if (size == 0 || size > kMostBytes) return 0;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  if (input[0] % 2 == 0) {
    const auto answer = host.answer(std::string(input.substr(1)));
    must(answer.status == 200 || answer.status == 500);
    must(answer.body.size() < 100 * kMostBytes);
    return 0;
  }
  const Form form = form_of(FormReader(input.substr(1)));
  const auto answer = host.answer(form.body);
  must(answer.status == 200);
  must(answer.body == form.answer);
  must(host.files.saved == form.saved);
  return 0;
}
