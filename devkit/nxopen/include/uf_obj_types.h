// Names of objects.
#pragma once

#define UF_OBJ_NAME_LEN 132
#define UF_OBJ_NAME_BUFSIZE (4 * UF_OBJ_NAME_LEN + 1)
