// What pages tell the visitor's browser directly: alert scripts, a text that ends the page, and
// the refusal of a form that another site posted. Nothing is escaped.
#ifndef RK_SITE_MESSAGES_H_
#define RK_SITE_MESSAGES_H_

#include "site/page_context.h"
#include "value/value.h"

namespace rk::site {

// Writes a script that shows `errorcode`, then leads to `locpage` ("local": stays; empty: back).
// Ends the page where `beend` is 1.
void MessBox(const PageContext& page, const Value& errorcode, const Value& locpage,
             const Value& beend);

// Writes a text and ends the page.
void ShowMsg(const PageContext& page, const Value& MsgStr);

// Writes a refusal and ends the page, unless the referer names the server from its 8th character
// on.
void checkpost(const PageContext& page);

}  // namespace rk::site

#endif  // RK_SITE_MESSAGES_H_
