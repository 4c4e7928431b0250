// Names of files.
#pragma once

#define UF_CFI_MAX_FILE_NAME_BUFSIZE (4 * 256 + 1)
