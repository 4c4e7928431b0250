// Stands for the host's resource of the same name, which a library must carry to be signed. A library that is to be
// loaded includes this source once.
#include <uf_defs.h>

extern "C" {

DllExport unsigned char NXSigningResource[1] = {};
}
