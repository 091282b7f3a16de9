function preStep(){
	window.location='/TarloQuery.Zembra?action=addsearchdlg_UsrField&step=1_1';
}
function check(){
	var value=viewfield2.value;
	if(value=='' || value==null || value=='undefined'){
		top.sAlert('请至少选择一个显示字段！');
		return false;
	}
	return true;
}
