#pragma once
// The operations of the form widgets and the platform's services, as pages and other components
// call them.

#include "frame/page.h"

namespace tarlo::services {

// --- Rows of a statement as the text that the browser's widgets take. Statements give two columns:
// value first, caption second. The XML for combo boxes is encoded for an attribute in double
// quotes; the other two forms are data that the page encodes where it puts them, and a caption with
// their marks in it breaks the list.

// "<caption<value" for each row, then ">" and the index (from 0) of the last row whose value equals
// sPar, or nothing. Empty with no rows. A Null sPar becomes "" in the caller's variable. Raises
// DatabaseError.
Variant TarloCBODataSource(Page& page, const Variant& sSQL, Variant& sPar);
// The options as XML for a combo box (data_sources.h); Empty with no rows and for a refused
// statement. Never raises.
Variant GetComboBoxXMLs(Page& page, const Variant& sSQL);
// The options as XML for radio buttons and check boxes; Empty with no rows. Raises DatabaseError.
Variant GetRadioOrCheckBoxXML(Page& page, const Variant& sSQL);

// --- The floating dialog of a page: a hidden box with a title, a body and buttons, and the script
// that shows it.

// Writes the dialog; gives Empty. `id` names the box, in its element and in script: what is no name
// becomes _. Every text is markup, which the calling page has made: values of a request or of rows
// are encoded by it. `WinButon` that is Empty, Null or "" gives three standard buttons, which call
// the page's DlgAddNew, DlgModify and DlgDelete. A width or height that is no number raises error
// 13, one beyond 16 bits error 6, with the start of the box already written. A page can hold one
// dialog only that openDivDlg() opens.
Variant TarloDivDialog(Page& page, const Variant& id, const Variant& WinTitle,
                       const Variant& TopicTitle, const Variant& WinWidth, const Variant& WinHeight,
                       const Variant& WinBody, const Variant& WinButon);

// --- Context help of the action `sAction` of the session's module, kept in Zembra_SubHelp: the
// text as HTML list items, the title; a fixed sentence when there is none. They raise
// DatabaseError.

Variant getActionHelp(Page& page, const Variant& sAction);
Variant getActionHelpTitle(Page& page, const Variant& sAction);

// --- Tables and fields of the data dictionary by their physical names. Names go into the statement
// between single quotes and are not escaped. All raise DatabaseError; the last three raise error 13
// when there is no such table or field.

// Physical name and display name of the tables, or of those alone that users have defined
// ("UserTb_"...), unless `showAll` is True; Empty when there are none. `sDatabase` is not read.
Variant getUserTableName(Page& page, const Variant& sDatabase, const Variant& showAll);
// Physical name and display name of the table's fields, Empty when there are none.
Variant getUserFieldName(Page& page, const Variant& sTableName);
Variant getTableIDField(Page& page, const Variant& sTableName);  // name of the key field
Variant getTableIDValue(Page& page, const Variant& sTableName);  // DDT_ID
Variant getFieldIDValue(Page& page, const Variant& sTableName,
                        const Variant& sFieldName);  // DDF_ID

// The values A to F of the policy as a rows table. A policy that is not there gives a table with
// bounds 10 and 1, in which cells 0 to 8 of row 0 hold the number 0 and all others are Empty, so
// callers can read any value of row 0 without asking first.
Variant getPolicyInfo(Page& page, const Variant& strName);

// --- Mail to users of the platform, through the component CDONTS.NewMail. The body is mail text in
// HTML; a closing is appended to it, in the caller's variable too. 1 when it was sent. They raise
// what the mail component raises when the message cannot be sent, and DatabaseError.

// From Application("mailSender"), with the telephone numbers and the company of the configuration
// in the closing.
Variant SendPayment(Page& page, const Variant& toName, const Variant& Subject_, Variant& Body_);
// From value B of the policy "系统基本参数", from 0 when there is none.
Variant SendPassWordEmail(Page& page, const Variant& toName, const Variant& Subject_S,
                          Variant& Body_S);

// --- Files.

// Sends a file to the browser as a download: through Scripting.FileSystemObject, with a look every
// 16384 bytes whether the client is still there. True when the whole file went out, False when the
// client left. Raises what the file component raises, before anything is sent: error 53 for a file
// that is not there or not below the configured folder.
Variant TransferFile(Page& page, const Variant& pathandfilename, const Variant& filename);

}  // namespace tarlo::services
