#pragma once
// Condition text from filter conditions. The two operations are not one with an option: they differ
// in their blanks, in the markers that they leave for the filter merge, and in what they do on the
// last condition, and stored statements hang on all of it.

#include "frame/page.h"

namespace tarlo::compile {

// For schemes without computed fields. A condition on a field that is reached by a via field is
// left as a marked item, "|||[via column];[column] <comparison>", for the filter merge to put the
// table's alias in. A condition whose field is not found is dropped with its logic word. "" for an
// empty filter. Raises 9 for a condition with too few parts, 13 for a code that is no number.
Variant Query_getfilterNoVir(Page& page, const Variant& filter);

// For schemes with computed fields. The via field is not used, so such a condition bears the
// table's physical name; "|||" stands in front of it only as a separator. The last three characters
// are cut whatever they are: normally the "-1" of the last condition. Raises as above, 9 for a
// computed field that does not exist, 13 for a reference that is not found, and 5 when nothing was
// compiled, so also for an empty filter.
Variant Query_getfilter(Page& page, const Variant& filter, const Variant& computed);

}  // namespace tarlo::compile
