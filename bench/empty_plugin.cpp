// The least that the host can load: the entry points that it asks for, and nothing behind them.
#include <uf_defs.h>
#include <uf_exit.h>

extern "C" {

DllExport void ufusr(char* /*param*/, int* /*retcod*/, int /*param_len*/) {}

DllExport int ufusr_ask_unload() {
    return UF_UNLOAD_UG_TERMINATE;
}
}
