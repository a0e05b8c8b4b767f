// Resource IDs of the language module (LangEng.dll and its siblings): the
// string table, the menus and soft-key bars, and the command IDs those menus
// send. The numbers are fixed: every language module ships the same IDs, so a
// module built for another language drops in without a program change.
//
// Plain #defines only: this header is read by windres as well as by C++.
#pragma once

// ---------------------------------------------------------------------------
// Menus and soft-key bars (MENU resources). A soft-key bar has two top-level
// entries: the left soft key and the right soft key; a top-level POPUP opens
// a menu from its soft key.
// ---------------------------------------------------------------------------
#define IDM_MAIN_MENUBAR             140   // main window: Open | Menu
#define IDM_CONTEXT_MENUS            149   // not a bar: a row of context popups
#define IDM_SETTINGS_PAGE_ONE_TAB    155   // settings page with one tab: Done | Menu
#define IDM_ITEM_EDIT_MENUBAR        179   // item editor: Done (IDOK) | Cancel (IDCANCEL)
#define IDM_SETTINGS_MENUBAR         183   // settings dialog: Done | Menu
#define IDM_COLOR_PICKER_MENUBAR     197   // colour picker: Select (1) | Menu (popup 2)
#define IDM_SETTINGS_PAGE_TABS       197   // program module's 197: Done | Menu (tabs)
#define IDM_FILE_SELECT_MENUBAR      201   // file selection dialog: Select (6) | Cancel (2)
#define IDM_NEW_LIST_MENUBAR         40062 // new list dialog: Create | Menu
#define IDM_LIST_WINDOW_MENUBAR      40066 // list window: Save | Menu
#define IDM_TEMPLATE_EDITOR_MENUBAR  40077 // template editor: Save | Menu
#define IDM_OK_CANCEL_MENUBAR        40078 // text entry, field properties, icon picker: OK | Cancel
#define IDM_TEMPLATES_MANAGER_MENUBAR 40079 // templates manager: Done | Menu
#define IDM_ABOUT_MENUBAR            40088 // about screen: Done (IDOK)

// Popups of IDM_CONTEXT_MENUS, by position.
#define CTX_TREE_TOP_LEVEL           0     // category, Root item or list at the top level
#define CTX_TEMPLATES                1     // template rows (templates manager twins)
#define CTX_TREE_IN_CATEGORY         2     // a list inside a category
#define CTX_TEMPLATE_FIELDS          3     // field rows of the template editor
#define CTX_LIST_ITEMS               4     // rows of the list window

// Positions inside the list window's menu (right soft key of
// IDM_LIST_WINDOW_MENUBAR) and inside its context popup CTX_LIST_ITEMS.
#define LISTWIN_POS_ROW_COLOR_POPUP  4     // "Row colour" popup: needs a selection
#define LISTWIN_POS_SORT_POPUP       5     // "Sort by" popup: one placeholder entry at 0

// ---------------------------------------------------------------------------
// Command IDs
// ---------------------------------------------------------------------------
// Common soft-key commands (IDOK 1 and IDCANCEL 2 are used as they stand).
#define IDC_FILE_SELECT_ACCEPT       6     // file selection dialog: accept by mode
#define IDC_OK                       40069 // confirming soft key of many dialogs
#define IDC_CANCEL                   40076 // cancelling soft key (text entry, template editor, pickers)

// Main window (menu 140 and the tree popups of menu 149).
#define IDM_NEW_LIST                 40004
#define IDM_NEW_CATEGORY             40006
#define IDM_DELETE                   40009
#define IDM_RENAME                   40014
#define IDM_DELETE_CTX               40042 // context-menu twin of IDM_DELETE
#define IDM_RENAME_CTX               40043 // context-menu twin of IDM_RENAME
#define IDM_SETTINGS                 40045
#define IDM_ABOUT                    40046
#define IDM_OPEN                     40050
#define IDM_LISTS_FOLDER             40058
#define IDM_EXIT                     40059
#define IDM_IMPORT                   40083

// List window (menu 40066 and popup CTX_LIST_ITEMS of menu 149).
#define IDM_SORT_BASE                1000  // 1000 + field index; 1000 + field count = unsorted
#define IDM_ADD_ITEM                 40018
#define IDM_EDIT_ITEM                40042 // same number as IDM_DELETE_CTX, other window
#define IDM_DELETE_ITEM              40043 // same number as IDM_RENAME_CTX, other window
#define IDM_SAVE                     40051 // also "Done" of a settings page
#define IDM_LIST_ICON                40064
#define IDM_ITEM_COLOR               40065
#define IDM_AUTOSIZE_COLUMNS         40067
#define IDM_EXPORT                   40068
#define IDM_DELETE_CHECKED           40085 // removed from the menu unless field 0 is a check field
#define IDM_CHECK_ALL                8192
#define IDM_UNCHECK_ALL              8193
#define IDM_ROW_YELLOW               191
#define IDM_ROW_RED                  192
#define IDM_ROW_GREEN                193
#define IDM_ROW_BLUE                 194
#define IDM_ROW_NONE                 195

// Template editor (menu 40077).
#define IDM_ADD_FIELD                40070
#define IDM_DELETE_FIELD             40071
#define IDM_DELETE_ALL_FIELDS        40072
#define IDM_FIELD_UP                 40073
#define IDM_FIELD_DOWN               40074
#define IDM_TEMPLATE_ICON            40075

// New list dialog (menu 40062).
#define IDM_NEW_TEMPLATE_FOR_LIST    40061
#define IDM_CREATE_LIST              40063

// Templates manager (menu 40079 and its context twins).
#define IDM_TEMPLATES_FOLDER         177
#define IDM_NEW_TEMPLATE             40003
#define IDM_EDIT_TEMPLATE            40052
#define IDM_DELETE_TEMPLATE          40053
#define IDM_NEW_TEMPLATE_CTX         40080
#define IDM_EDIT_TEMPLATE_CTX        40081
#define IDM_DELETE_TEMPLATE_CTX      40082

// Settings dialog (menu 183) and settings pages (menus 155 and 197).
#define IDM_SETTINGS_ABOUT           32772
#define IDM_PAGE_TAB_BASE            100   // 100 + tab index
#define IDM_PAGE_MENU_POPUP          123456 // the popup soft key of a settings page

// Colour picker (menu 197 of the language module).
#define IDM_COLOR_CANCEL             1020
#define IDM_COLOR_DEFAULT            1021
#define IDM_COLOR_SLIDERS            1022
#define IDM_COLOR_HTML               1023
#define IDM_COLOR_PALETTE            1024
#define IDM_COLOR_MENU_POPUP         2     // the right soft key's popup (IDCANCEL's number)

// Resource number handed to the colour picker and stored; nothing is behind it.
#define IDR_COLOR_PICKER_TAG         181

// ---------------------------------------------------------------------------
// Strings
// ---------------------------------------------------------------------------
// Settings dialog and pages.
#define IDS_PAGE_GENERAL             8000
#define IDS_PAGE_COLORS              8001
#define IDS_PAGE_TEMPLATES           8002
#define IDS_FOLDER_CLEAR             8014
#define IDS_FOLDER_BROWSE            8015
#define IDS_SETTINGS_CANCEL_CAPTION  8029
#define IDS_SETTINGS_CANCEL_TEXT     8030
#define IDS_SETTINGS_TITLE           8031
#define IDS_TAB_FONT                 8032
#define IDS_CANCEL                   8034
#define IDS_DONE                     8035
#define IDS_TAB_FOLDERS              8041
#define IDS_FONT_SIZE_LABEL          8042
#define IDS_FONT_FACE_LABEL          8043
#define IDS_ICONS_FOLDER_LABEL       8046
#define IDS_COLOR_LIST_BACK          8049
#define IDS_COLOR_LIST_TEXT          8050
#define IDS_COLOR_SWATCH             8051
#define IDS_COLOR_CATEGORY_TEXT      8052
#define IDS_COLOR_LIST_NAME_TEXT     8053
#define IDS_DEFAULT_COLOR            8097  // "Default" on a swatch never chosen
#define IDS_MENU                     8191  // label of a popup soft key
#define IDS_TEMPLATES_FOLDER_LABEL   40087

// List window.
#define IDS_LEAVE_UNSAVED_TEXT       8044
#define IDS_LEAVE_UNSAVED_CAPTION    8045
#define IDS_NONE                     8073  // "unsorted" entry; icon picker with no icon
#define IDS_UNCHECKED                8091
#define IDS_CHECKED                  8092
#define IDS_SAVE_FAILED              8093
#define IDS_LIST_VERSION_BAD         8096

// Common.
#define IDS_ERROR_CAPTION            8068

// Main window.
#define IDS_LISTS_FOLDER_TITLE       8056
#define IDS_NEW_CATEGORY_NAME        8064  // code appends " %d" while the name is taken
#define IDS_DELETE_CAPTION           8065
#define IDS_DELETE_CATEGORY_TEXT     8066
#define IDS_DELETE_LIST_TEXT         8067
#define IDS_NO_SELECTION             8069
#define IDS_CATEGORY_NOT_EMPTY       8070
#define IDS_IMPORT_DONE_TEXT         8185
#define IDS_IMPORT_DONE_CAPTION      8186

// Templates: editor, new list dialog, manager.
#define IDS_DELETE_TEMPLATE_TEXT     8074  // code appends " \"name\""
#define IDS_NO_TEMPLATE_SELECTED     8075
#define IDS_TEMPLATE_NAME_EMPTY      8084
#define IDS_TEMPLATE_CREATE_FAILED   8085
#define IDS_DELETE_TEMPLATE_CAPTION  8099
#define IDS_TEMPLATE_VERSION_BAD     8100
#define IDS_LIST_CREATE_FAILED       8101
#define IDS_TEMPLATE_OPEN_FAILED     8102
#define IDS_LIST_NAME_EMPTY          8106
#define IDS_TEMPLATES_FOLDER_TITLE   8157
#define IDS_NEW_LIST_HEADING         8182
#define IDS_LIST_EXISTS_TEXT         8183  // one "%s": the list name
#define IDS_LIST_EXISTS_CAPTION      8184
#define IDS_TEMPLATE_FIELDS_HEADING  8195
#define IDS_TEMPLATES_HEADING        8196

// Item editor and field properties.
#define IDS_NUMBER_INVALID           8104  // code appends " \"field name\""

// Icon picker.
#define IDS_ICON_PREVIEW_LABEL       8107

// CSV export and import.
#define IDS_EXPORT_CREATE_FAILED     8166
#define IDS_EXPORT_DONE_TEXT         8167
#define IDS_EXPORT_DONE_CAPTION      8168
#define IDS_IMPORT_OPEN_FAILED       8169

// Colour picker.
#define IDS_COLOR_TITLE              8170
#define IDS_COLOR_RED                8171
#define IDS_COLOR_GREEN              8172
#define IDS_COLOR_BLUE               8173
#define IDS_COLOR_MODE_SLIDERS       8174
#define IDS_COLOR_MODE_PALETTE       8175
#define IDS_COLOR_SELECT             8176
#define IDS_COLOR_TOO_LARGE_TEXT     8178
#define IDS_COLOR_TOO_LARGE_CAPTION  8179
#define IDS_COLOR_PREVIEW            8180

// Field values: type names (8111 + type) and choice texts.
#define IDS_TYPE_BASE                8111  // 8111 + FieldType
#define IDS_TYPE_DATE                8111
#define IDS_TYPE_TIME                8112
#define IDS_TYPE_PRIORITY            8113
#define IDS_TYPE_TEXT                8114
#define IDS_TYPE_YESNO               8115
#define IDS_TYPE_NUMBER              8116
#define IDS_TYPE_CHECK               8117
#define IDS_TYPE_DATETIME            8118
#define IDS_TYPE_SELECTION           8119
#define IDS_YES                      8089  // YesNo choice 1
#define IDS_NO                       8090  // YesNo choice 0
#define IDS_PRIORITY_HIGH            8135  // Priority choice 1 (ranks highest)
#define IDS_PRIORITY_NORMAL          8136  // Priority choice 0
#define IDS_PRIORITY_LOW             8137  // Priority choice 2
#define IDS_CHECK_CLEAR              8144  // Check choice 0
#define IDS_CHECK_SET                8145  // Check choice 1
#define IDS_SELECTION_BASE           8124  // Selection choices 0..10: 8124 + choice
#define IDS_SELECTION_LAST_LOW       8134
#define IDS_SELECTION_EMPTY          8187  // Selection choice 11: the empty selection (empty text)
#define IDS_SELECTION_12             8188
#define IDS_SELECTION_13             8189
#define IDS_DATE_MODE_BASE           8138  // date default modes 0..4: 8138 + mode
#define IDS_DATE_MODE_TODAY          8138
#define IDS_DATE_MODE_TOMORROW       8139
#define IDS_DATE_MODE_NEXT_WEEK      8140
#define IDS_DATE_MODE_FOUR_WEEKS     8141
#define IDS_DATE_MODE_NEXT_YEAR      8142
#define IDS_TIME_MODE_NOW            8143  // time default mode 0

// Texts the program needs beyond the fixed numbers above (own range).
#define IDS_FILE_SELECT_UP           178   // hint on the path line of the file dialog
#define IDS_FILE_NAME_LABEL          8200
#define IDS_FILE_TYPE_LABEL          8201
#define IDS_FILE_SELECT              8202
#define IDS_FIELD_TYPE_LABEL         8203
#define IDS_FIELD_NAME_LABEL         8204
#define IDS_FIELD_DEFAULT_LABEL      8205
#define IDS_ABOUT_TITLE              8206
#define IDS_ABOUT_PRODUCT            8207
#define IDS_ABOUT_VERSION            8208  // one "%s": the version
#define IDS_ABOUT_BUILT              8209  // one "%s": the build date
#define IDS_ITEM_EDIT_TITLE          8210  // item editor title "Edit Item"
#define IDS_ICON_PICKER_TITLE        8211  // title of the icon picker ("Choose Icon")
#define IDS_ABOUT_NAME               8212  // the product's name on the about screen
#define IDS_ABOUT_LISTS_FOLDER       8213
#define IDS_ABOUT_TEMPLATES_FOLDER   8214
#define IDS_ABOUT_NOT_SET            8215  // in place of a folder the registry lacks

// Main view messages beyond the device's own (8330-8339)
#define IDS_NEW_CATEGORY_FAILED      8330  // the lists folder takes no new folder

// Template dialogs beyond the device's own (8220-8229)
#define IDS_TOO_MANY_FIELDS          8220  // template editor: a 51st field is refused

// Why a file could not be written or read (own range). A cause follows the
// message of the failed step as its own sentence; it never replaces it.
#define IDS_CAUSE_DISK_FULL          8300
#define IDS_CAUSE_READ_ONLY          8301
#define IDS_CAUSE_FOLDER_MISSING     8302
#define IDS_CAUSE_INVALID_NAME       8303
#define IDS_CAUSE_OTHER              8304
#define IDS_LIST_MISSING             8305
#define IDS_LIST_EMPTY               8306
#define IDS_LIST_DAMAGED             8307
#define IDS_LIST_PARTLY_READ         8308  // one "%s": "N of M" (IDS_COUNT_OF_TOTAL) items
#define IDS_LIST_TOO_LARGE           8309
#define IDS_LIST_CANNOT_OPEN         8310
#define IDS_SAVE_DAMAGED_TEXT        8311
#define IDS_SAVE_DAMAGED_CAPTION     8312
#define IDS_TEMPLATE_DAMAGED         8313
#define IDS_TEMPLATE_EMPTY           8314
#define IDS_TEMPLATE_PARTLY_READ     8315  // one "%s": "N of M" (IDS_COUNT_OF_TOTAL) fields
#define IDS_TEMPLATE_MISSING         8316
#define IDS_SAVE_DAMAGED_TEMPLATE_TEXT 8317
#define IDS_COUNT_OF_TOTAL           8318  // two "%s": the part read, then the whole ("2 of 3")
