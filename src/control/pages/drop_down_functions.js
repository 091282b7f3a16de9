function preStep(){
	window.location='/TarloQuery.Zembra?action=addsearchdlg_UsrField&step=1_1';
}
function getcname(){
	document.all("cfield").value = realfield2.text + ',' + viewfield2.text;
}
function chanTable(){
	TarloDialog.action.value='addSearchDlg_UsrField2';
	TarloDialog.submit();
}
