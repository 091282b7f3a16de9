#include "frame/policy.h"

#include "frame/data.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::frame {

Variant getPolicyRow(Page& page, const Variant& name) {
  const Rows found =
      rows(page,
           "select  Policy_ParaA,Policy_ParaB,Policy_ParaC,Policy_ParaD,Policy_ParaE,Policy_ParaF"
           " From Zembra_Policy Where Policy_Name = '" +
               variant::spliced(name) + "'");
  if (!found.empty()) return found.table();
  Array absent({10, 1});
  for (std::ptrdiff_t value = 0; value <= 8; ++value) absent.at(value, 0) = 0;
  return absent;
}

}  // namespace tarlo::frame
