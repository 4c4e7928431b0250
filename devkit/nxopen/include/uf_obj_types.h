// Names of objects.
#pragma once

#define UF_OBJ_NAME_BUFSIZE (4 * 132 + 1)
