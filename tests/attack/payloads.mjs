// What an attacker sends, and the request keys that the pages read.

export const kPayloads = [
  '1 or 1=1',
  "1' or '1'='1",
  '1) union select Hash,User_ID from Tarlo_Credential --',
  '1 union select User_user,User_ID from Zembra_User --',
  "x' union select User_user,User_Name from Zembra_User where ''='",
  "1;update Zembra_User set User_user='pwned'",
  "1');update Zembra_Permission set permission_forbid=0 --",
  "x',1,'','','','','update Zembra_User set User_user=''pwned''|||','',1,1) --",
  "x',(select max(Hash) from Tarlo_Credential),'','','','','','',1,1) --",
  "1 where 1=1 update Zembra_Menu set Menu_Href='javascript:1' --",
  '(select User_user from Zembra_User where User_ID=1)',
  'select Hash from Tarlo_Credential',
  'select User_joinGroupID,User_joinGroupID from Zembra_User',
  '-1 union select User_joinGroupID,User_ID from Zembra_User',
  "x' union select Policy_ParaA,1 from Zembra_Policy where ''='",
  "update Zembra_User set User_user='pwned'",
  // Without commas, for places where a list is split: an id that brings a name of its own.
  "1 and 1=0 union select * from (select 'UserTb_Customer' as a) as x cross join (select 'Name] <> '''+User_joinGroupID+''' and [UserTb_Customer].[Name' as b from Zembra_User where User_ID=24) as y,1,5,-1",
  '[Zembra_User].[User_user]',
  '[UserTb_Employee].[Zembra_ID]',
  '[Tarlo_Credential].[Hash],1,2;[x].[y]',
  "1];exec xp_cmdshell 'x' --",
  "insert into Zembra_User (User_user) values ('pwned')",
  'x"\'><img src=x onerror=alert(1)></script></textarea><!--',
  '-1',
  '99999999999999999999',
  '%00%0d%0aSet-Cookie: a=b',
  '1,2,3|||4,5,6|||',
  'a:[x|1];b:1/0',
  "1,1,'' or 1=1,and|||2,7,(select 1),-1",
  '＇；－－',
  '\u0000\u0007\uFFFF',
  'A'.repeat(3000),
  '('.repeat(300),
];

export const kKeys = `
  id queryid modelid prikeyid type sTable multi mul virtual gostep field field1 contrltype
  fieldtype filter realField viewField viewfields Fields rel relfield relField1 relField2
  relField3 CField TitleField QF_Name QF_Desc TableName step0Multi step1Virtual step2Rel
  step3Stats step3Groupby step4Name step4Memo step4Sys step4Dic Mulrelation sql grid view right
  search sort page table link value text condition parent`
  .trim()
  .split(/\s+/);

// Requests that would work, of which one value at a time is replaced.
const kUserField = {
  realField: '[UserTb_Customer].[Zembra_ID]',
  viewField: '[UserTb_Customer].[Name]',
};
const kSystemField = { realField: '[UserTb_Task].[Zembra_ID]', viewField: '[UserTb_Task].[Name]' };
const kNoSteps = { step0Multi: '', step1Virtual: '', step2Rel: '' };
export const kHonest = {
  addSearch: {
    TableName: '11',
    ...kNoSteps,
    step3Stats: '',
    step3Groupby: '',
    step4Name: 'attacked',
    step4Memo: '',
    step4Sys: '0',
    step4Dic: '1',
    Mulrelation: '0',
  },
  previewSearchdlg: { TableName: '11', ...kNoSteps },
  savesearch_UsrField: {
    fieldtype: '1',
    id: '1',
    QF_Name: 'attacked',
    ...kUserField,
    relfield: '-1',
    filter: '',
  },
  savesearch_sysField1: {
    id: '34',
    queryid: '34',
    QF_Name: 'attacked',
    ...kSystemField,
    filter: '',
  },
  savesearch_sysField2: {
    id: '34',
    queryid: '34',
    QF_Name: 'attacked',
    viewfields: '1|||2',
    rel: '3',
  },
  previewSearchdlg_UsrField1: { ...kUserField, filter: '' },
  previewSearchdlg_UsrField3: { id: '1', viewfield: '1,2', TitleField: 'a,b' },
  previewSearchdlg_sysField1: { id: '34', ...kSystemField },
  showSearchpreview_SysField: { sql: 'select 1,2', rel: 'UserTb_Employee,Status,Name,Salary' },
  showSearchDlg: { id: '1' },
  showSearchDlg_UsrField: { id: '1' },
  showSearchDlg_sysField: { id: '7' },
  addSearchDlg3: { sTable: '11', multi: '', type: '1', prikeyid: '1' },
  addSearchDlg6: { prikeyid: '1' },
  querycheckselect: { field: '1,2' },
};

// What no answer may hold: texts of the front end and of the engine, paths, hashes, names of ours.
export const kNeverShown = [
  /canary-\w+/,
  /sqlite/i,
  /no such (table|column|function)/i,
  /near "[^"]*": syntax/i,
  /unknown (table|column|function|procedure) /,
  /line \d+, column \d+/,
  /\$argon2/,
  /\/tmp\/|\/home\/|\/root\/|demo\.db/,
  // Payloads that were saved as names come back in lists.
  /Tarlo_(Credential|SignInLink|ApiToken)(?!\]\.\[Hash\],1,2|[^<]*(select|from))/,
  /std::|terminate called|basic_string|\.cpp\b/,
  /SQLSTATE|state:? (42000|42501)/,
];
