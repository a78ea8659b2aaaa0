// Numbers of the resources in pelvaro.rc, read by the resource compiler too. The application's icon has the lowest, so
// that the shell shows it for the exe.
#pragma once

#define PELVARO_ICON_APPLICATION 1
#define PELVARO_ICON_ADD 2
#define PELVARO_ICON_CONNECT 3
#define PELVARO_ICON_HANG_UP 4
#define PELVARO_ICON_LIMITS 5
#define PELVARO_ICON_SIGN_IN 6
#define PELVARO_ICON_DIALING 7
#define PELVARO_ICON_FAILED 8
#define PELVARO_ICON_LIST_ENTRY 9
#define PELVARO_ICON_CONNECTED 10
#define PELVARO_ICON_DISCONNECTED 11
#define PELVARO_ICON_CABLE 12
#define PELVARO_ICON_DRIVER 13
// Added to a button's icon: the variant for the disabled button.
#define PELVARO_ICON_MUTED 100
