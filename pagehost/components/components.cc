#include "pagehost/components/components.h"

#include <string>
#include <string_view>

#include "pagehost/components/command_object.h"
#include "pagehost/components/connection_object.h"
#include "pagehost/components/dictionary.h"
#include "pagehost/components/file_system.h"
#include "pagehost/components/http_request_object.h"
#include "pagehost/components/recordset_object.h"
#include "pagehost/components/stream_object.h"
#include "pagehost/components/xml_document.h"

namespace rk::pagehost {
namespace {

// Of the XML objects; the others select by XSL patterns until they are told.
constexpr std::string_view kXPathVersions[] = {".4.0", ".5.0", ".6.0"};

FileSystem system_of(PageServices& page) {
  return {&page.files(), &page.code_pages(), page.ansi_code_page(), page.memory()};
}

Ref<Object> file_system(PageServices& page) {
  return make_ref<FileSystemObject>(system_of(page), page.random(), page.clock(), page.site_root());
}

XmlServices xml_services(PageServices& page, const ComponentParts& parts, bool patterns) {
  return {parts.xml,
          system_of(page),
          page.site_root(),
          parts.http ? parts.http(page) : nullptr,
          [parts, patterns](PageServices& other) { return xml_services(other, parts, patterns); },
          patterns};
}

AdoServices ado_services(PageServices& page, const platform::Xml* xml) {
  if (xml == nullptr) return page.database();
  return {page.database(), std::make_shared<RowFiles>(RowFiles{
                               {xml, system_of(page), page.site_root(), nullptr},
                               [xml](PageServices& other) { return ado_services(other, xml); }})};
}

void add_ado(Programs& programs, const platform::Xml* xml) {
  programs.add("ADODB.Connection", [xml](PageServices& page) {
    return make_ref<ConnectionObject>(ado_services(page, xml));
  });
  programs.add("ADODB.Recordset", [xml](PageServices& page) {
    return make_ref<RecordsetObject>(ado_services(page, xml));
  });
  programs.add("ADODB.Command", [xml](PageServices& page) {
    return make_ref<CommandObject>(ado_services(page, xml));
  });
  programs.add("ADODB.Stream",
               [](PageServices& page) { return make_ref<StreamObject>(system_of(page)); });
}

void add_xml(Programs& programs, const ComponentParts& parts) {
  const auto document = [parts](bool patterns) {
    return [parts, patterns](PageServices& page) {
      return make_ref<XmlDocumentObject>(xml_services(page, parts, patterns));
    };
  };
  for (const std::string_view name :
       {"MSXML2.DOMDocument", "MSXML2.FreeThreadedDOMDocument", "MSXML.DOMDocument",
        "Microsoft.XMLDOM", "Microsoft.FreeThreadedXMLDOM"}) {
    programs.add(name, document(true));
    for (const std::string_view version : kXPathVersions) {
      programs.add(std::string(name) + std::string(version), document(false));
    }
  }
}

void add_http(Programs& programs, const ComponentParts& parts) {
  const auto made = [parts](HttpFlavour flavour, bool patterns) {
    return [parts, flavour, patterns](PageServices& page) {
      return make_ref<HttpRequestObject>(flavour, xml_services(page, parts, patterns));
    };
  };
  for (const std::string_view name :
       {"MSXML2.ServerXMLHTTP", "MSXML2.XMLHTTP", "Microsoft.XMLHTTP", "Microsoft.ServerXMLHTTP"}) {
    programs.add(name, made(HttpFlavour::Xml, true));
    for (const std::string_view version : kXPathVersions) {
      programs.add(std::string(name) + std::string(version), made(HttpFlavour::Xml, false));
    }
  }
  programs.add("WinHttp.WinHttpRequest", made(HttpFlavour::Plain, true));
}

}  // namespace

void add_components(Programs& programs, const ComponentParts& parts) {
  if (parts.xml != nullptr) add_xml(programs, parts);
  if (parts.http) add_http(programs, parts);
  add_ado(programs, parts.xml);
  programs.add("Scripting.Dictionary", [](PageServices&) { return make_ref<Dictionary>(); });
  programs.add("Scripting.FileSystemObject", file_system);
}

}  // namespace rk::pagehost
