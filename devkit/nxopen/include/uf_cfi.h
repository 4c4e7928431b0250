// Names of files.
#pragma once

#define UF_CFI_MAX_FILE_NAME_SIZE 256
#define UF_CFI_MAX_FILE_NAME_BUFSIZE (4 * UF_CFI_MAX_FILE_NAME_SIZE + 1)
