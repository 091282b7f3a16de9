#include "host/site/refusal_line.h"

#include "host/site/log_text.h"
#include "host/site/visit.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::host {

void RefusalLine::refused(std::string_view statement, std::string_view reason) noexcept {
  ErrorState err;
  err.run([&] {
    log_.warn("{} {} statement refused: user {}, {}; statement {}", visit_.wire.id,
              logText(visit_.what), logText(variant::spliced(visit_.session.get("usrID"))),
              logText(reason), logText(statement));
  });
}

void RefusalLine::failed(const database::DatabaseError& error) noexcept {
  if (!failure_ || (mustBeTold(error) && !mustBeTold(*failure_))) failure_ = error;
}

bool RefusalLine::mustBeTold(const database::DatabaseError& error) {
  return error.native().outage != database::Outage::None || error.number() == database::kTimeout;
}

}  // namespace tarlo::host
