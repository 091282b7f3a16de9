function preStep(){
	window.location='/TarloQuery.Zembra?action=addsearchdlg_UsrField&step=1_1';
}
function testit(){
	document.all.action.value='previewSearchdlg_UsrField';
	document.all.listform.submit();
}
function save(){
	document.all.action.value='savesearch_UsrField';
}
