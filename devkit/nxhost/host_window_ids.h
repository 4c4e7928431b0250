/* The controls of the host's window, for its resource and its code. */
#define ID_PARTS 101
#define ID_DISPLAY 102
#define ID_MODIFIED 103
#define ID_APPLICATION 104
#define ID_APPLICATION_LABEL 105
#define ID_RUN 106
#define ID_LOG 107
#define ID_LOG_LABEL 108
