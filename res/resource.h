// Every resource and control identifier, read by the resource script and by the code.
#pragma once

// Icons: the program's own, the channel tree's and the event list's.
#define IDI_APPLICATION_ICON 2
#define IDI_TREE_ROOT 133
#define IDI_TREE_PUBLISHER 136
#define IDI_TREE_WINDOWS_LOGS 137
#define IDI_TREE_DEBUG_CHANNEL 138
#define IDI_TREE_SERVICES_LOGS 139
#define IDI_TREE_ADMIN_CHANNEL 140
#define IDI_TREE_ANALYTIC_CHANNEL 141
#define IDI_TREE_OPERATIONAL_CHANNEL 142
#define IDI_LEVEL_INFORMATION 144
#define IDI_LEVEL_WARNING 145
#define IDI_LEVEL_ERROR 146
#define IDI_LEVEL_AUDIT_FAILURE 147
#define IDI_LEVEL_AUDIT_SUCCESS 148

// Menus, accelerators, dialog.
#define IDD_ABOUT 103
#define IDR_MAIN_MENU 109
#define IDR_ACCELERATORS 109
#define IDR_LIST_CONTEXT_MENU 130

// Strings.
#define IDS_TITLE 103
#define IDS_WINDOW_CLASS 109

// Commands.
#define IDM_ABOUT 104
#define IDM_EXIT 105
#define IDM_OPTIONS 32771
#define IDM_REFRESH 32773
#define IDM_SET_AS_FROM 32774
#define IDM_SET_AS_TO 32775

// Controls of the main window. Two statics share 1103: code keeps handles and
// never looks a control up by its identifier.
#define IDC_STATUS_BAR 110
#define IDC_TOOLBAR 1002
#define IDC_FROM_PICKER 1003
#define IDC_TO_PICKER 1005
#define IDC_CHANNEL_TREE 1101
#define IDC_SOURCES_FRAME 1103
#define IDC_DETAILS_FRAME 1104
#define IDC_LOADED_VALUE 1105
#define IDC_NODE_NAME 1106
#define IDC_HEADER_PANE 1107
#define IDC_DETAILS_TAB 1108
#define IDC_DETAILS_EDIT 1109
#define IDC_TOTAL_VALUE 1110
#define IDC_LOADED_CAPTION 1111
#define IDC_TOTAL_CAPTION 1112
#define IDC_SOURCES_CAPTION 1113
#define IDC_SOURCES_SEARCH 1114
#define IDC_SOURCES_LIST 1115
#define IDC_SHOW_ALL_SOURCES 1116
#define IDC_EVENT_LIST 40004
#define IDC_FILTER_EDIT 40006

// A control without an identifier of its own, which the lean Windows headers lack.
#ifndef IDC_STATIC
#define IDC_STATIC (-1)
#endif

// Controls of the About box.
#define IDC_ICONS_LINK 1000
#define IDC_TIP_LINK 1001
