#pragma once
// Mail that the platform sends to its users, through the component CDONTS.NewMail. Both are
// operations. The body is mail text in HTML; a closing is appended to it, in the caller's variable
// too. They raise what the mail component raises when the message cannot be sent, and
// DatabaseError.

#include "frame/page.h"

namespace tarlo::services {

// From Application("mailSender"), with the telephone numbers and the company of the configuration
// in the closing. 1 when it was sent.
Variant SendPayment(Page& page, const Variant& toName, const Variant& Subject_, Variant& Body_);
// From value B of the policy "系统基本参数". 1 when it was sent.
Variant SendPassWordEmail(Page& page, const Variant& toName, const Variant& Subject_S,
                          Variant& Body_S);

}  // namespace tarlo::services
