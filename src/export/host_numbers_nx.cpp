// Compares the numbers of host_numbers.h with the names that the host's own headers give them. Compiled against an NX
// installation alone: the headers of the stand-in host took their numbers from ours, so they would always agree.
//
// When an assertion fails, or a name is not found, leave the number as it is: it is settled that the plug-in passes it.
// The name is what we believe it to mean, by public documentation. See in the header which enumerator has the number,
// and report that one, the value of the name below, and the release of NX to the maintainers, who decide whether the
// name was taken wrongly or the number has to depend on the release. Until then take out that one assertion to build,
// try the export in question on data that may be lost, and do not ship the result.
#include "export/host_numbers.h"

#include <uf.h>
#include <uf_clone.h>
#include <NXOpen/PrintPDFBuilder.hxx>

#define PIVRA_COMPARE(number, name)                                          \
    static_assert(pivra::host_numbers::number == static_cast<int>(name),     \
                  "host_numbers::" #number " differs from " #name            \
                  " in the headers of this NX release. Do not change the "   \
                  "number: report both values and the release, and see the " \
                  "top of host_numbers_nx.cpp for how to go on until then.")

// The documentation names all operations, without an order or numbers: likely, not sure.
PIVRA_COMPARE(cloneOperation, UF_CLONE_export_operation);
// Documented in order.
PIVRA_COMPARE(cloneAction, UF_CLONE_overwrite);
// The least sure one. The documentation lists "treat as lost", "strip family status" and "give error", later releases
// also "preserve family status", and promises no order; "strip" has our number when they count from 0 as listed.
PIVRA_COMPARE(familyTreatment, UF_CLONE_strip_family_status);
// The documentation gives no order, but that 2 means "by rule" is settled.
PIVRA_COMPARE(cloneNaming, UF_CLONE_naming_rule);
// Documented in order.
PIVRA_COMPARE(printAction, NXOpen::PrintPDFBuilder::ActionOptionNative);
// The documentation gives the name, and that it is one of the values that the query reports.
PIVRA_COMPARE(draftingModule, UF_APP_DRAFTING);
