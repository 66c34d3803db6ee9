// Host, the server-side services, as pages see it: public names and order, every argument by
// reference. What an operation does stands in services/.
//
// One object serves one page, on that page's thread. The page host calls OnStartPage before and
// OnEndPage after everything else; only writelog needs the page.
#ifndef RK_CLASSES_HOST_H_
#define RK_CLASSES_HOST_H_

#include <span>
#include <string_view>

#include "classes/equipment.h"
#include "classes/operations.h"
#include "platform/page.h"
#include "services/control_client.h"
#include "value/object.h"
#include "value/value.h"

namespace rk::classes {

class Host : public Object {
 public:
  explicit Host(const Equipment& equipment);

  // The table of the operations that scripts reach.
  static std::span<const Operation<Host>> operations();

  std::string_view type_name() const override { return "Host"; }
  MemberId member(std::string_view name) const override;
  Value invoke(MemberId id, CallKind kind, Arguments arguments) override;

  // OnStartPage raises 424 or 438 for what is no scripting context.
  void OnStartPage(Value& mysc);
  void OnEndPage();

  // Control server. The two handlers of the socket's events are called by ReturnText; outside of
  // it there is no socket, so that the second raises 91.
  void Init(Value& strServerIP, Value& intServerPort, Value& strServerPass);
  Value ReturnText(Value& strTextToSend);
  void wskEm_Connect();
  void wskEm_DataArrival(Value& bytesTotal);

  // Web fetch and text codecs
  Value GetURL(Value& url);
  Value bytes2bstr(Value& vin);
  Value URLEncodetoUTF8(Value& url);
  Value GetKey(Value& HTML, Value& Start, Value& Last);

  // Lookup, log and digest
  Value chDomainReg(Value& domain);
  Value writelog(Value& msgstrs);
  Value mailpass(Value& inputStr);

 private:
  services::Web web() const;

  const Equipment equipment_;
  // Of the five objects of a page only this one is ever used.
  std::shared_ptr<platform::Server> server_;
  services::ControlClient control_client_;
};

}  // namespace rk::classes

#endif  // RK_CLASSES_HOST_H_
