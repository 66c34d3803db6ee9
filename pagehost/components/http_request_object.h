// HttpRequestObject (MSXML2.ServerXMLHTTP, Microsoft.XMLHTTP, WinHttp.WinHttpRequest): one request
// to another server. It is sent, and its answer is there, when Send returns; a request that was
// opened as an asynchronous one tells its failure where the answer is asked for.
//
// Of the page's thread. A page's time bounds every wait.
#ifndef RK_PAGEHOST_COMPONENTS_HTTP_REQUEST_OBJECT_H_
#define RK_PAGEHOST_COMPONENTS_HTTP_REQUEST_OBJECT_H_

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "pagehost/components/xml_tree.h"
#include "pagehost/pages/held_memory.h"
#include "pagehost/pages/tabled_object.h"
#include "platform/http.h"

namespace rk::pagehost {

// Headers and their text that a page may send with one request; servers take some KiB.
inline constexpr std::size_t kMaxSentHeaderBytes = std::size_t{64} << 10;

enum class HttpFlavour : std::uint8_t {
  Xml,    // XMLHTTP and ServerXMLHTTP
  Plain,  // WinHttpRequest
};

class HttpRequestObject final : public TabledObject<HttpRequestObject> {
 public:
  // The services' client is there.
  HttpRequestObject(HttpFlavour flavour, const XmlServices& services)
      : flavour_(flavour), services_(services), held_(services.system.memory) {}
  std::string_view type_name() const override {
    return flavour_ == HttpFlavour::Xml ? "IServerXMLHTTPRequest2" : "IWinHttpRequest";
  }
  static std::span<const Member<HttpRequestObject>> members();

 private:
  enum class State : std::uint8_t { Fresh = 0, Opened = 1, Done = 4 };

  Value open(const Call& call);
  Value set_request_header(const Call& call);
  Value send(const Call& call);
  Value abort(const Call& call);
  Value wait(const Call& call);
  Value status(const Call& call);
  Value status_text(const Call& call);
  Value ready_state(const Call& call);
  Value response_text(const Call& call);
  Value response_body(const Call& call);
  Value response_stream(const Call& call);
  Value response_xml(const Call& call);
  Value response_header(const Call& call);
  Value all_response_headers(const Call& call);
  Value set_timeouts(const Call& call);
  Value set_option(const Call& call);
  Value option(const Call& call);
  Value property_option(const Call& call);
  Value set_credentials(const Call& call);
  Value ignored(const Call& call);

  const platform::HttpAnswer& answer();  // raises where none came
  void take_body(const Value& given);
  void take_option(std::int32_t name, const Value& value);
  Value kept_option(std::int32_t name) const;
  std::string charset_of_answer() const;

  HttpFlavour flavour_;
  XmlServices services_;
  State state_ = State::Fresh;
  bool async_ = false;
  platform::HttpRequest request_;
  std::optional<platform::HttpAnswer> answer_;
  std::optional<platform::HttpFailure> failure_;
  std::map<std::int32_t, Value> options_;
  Ref<Object> document_;  // of responseXML
  HeldBytes held_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_HTTP_REQUEST_OBJECT_H_
