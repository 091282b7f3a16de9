var StatsRecord='';
var ViewRecord='';
var count=1;
var groupHTML='<div><table border="0" cellspacing="0" cellpadding="2"><tr><td nowrap>按此字段分组:</td><td><tarlo:combobox id="groupby" width="150" editable="false" selectvalue="-1000" src="{{groups:built:script-single}}" /></td></tr></table></div>';
function saveStats(){
	StatsRecord=StatsRecord+fieldselect.value+','+statsname.value+'|||';
	ViewRecord=count+'. '+fieldselect.text{{shown:built}}+'_'+statsname.text+'<br>';
	document.all("Result").insertAdjacentHTML('BeforeEnd',ViewRecord);
	count++;
}
function clearStats(){
	ViewRecord='';
	StatsRecord='';
	document.all("Result").innerHTML='';
	count=1;
}
function appgroup(){
	groupdiv0.insertAdjacentHTML('BeforeEnd',groupHTML);
}
function delgroup(){
	var rows=groupdiv0.children;
	if(rows.length>1) rows[rows.length-1].remove();
}
function setGroupStats(){
	var group='',boxes=document.all("groupby");
	if(boxes.length==null){
		if(boxes.value!=-1000) group=boxes.value;
	}else{
		for(var k=0;k<boxes.length;k++) if(boxes[k].value!=-1000) group=group+boxes[k].value+',';
		if(group!='') group=group.substring(0,group.length-1);
	}
	if(StatsRecord.substring(StatsRecord.length-3)=='|||') document.all("statsnew").value=StatsRecord.substring(0,StatsRecord.length-3);
	document.all("group").value=group;
}
function preStep(){
	var address='/TarloQuery.Zembra?action=addsearchdlg&gostep={{step:address}}';
	if('{{step:script}}'=='5') window.location=address+'&step=1_1&sTable={{table:address}}'+"&stats="+StatsRecord;
	if('{{step:script}}'=='6') window.location=address+'&step=2&sTable={{table:address}}'+"&stats="+StatsRecord;
	if('{{step:script}}'=='7' || '{{step:script}}'=='8') window.location=address+'&step=3&sTable={{table:address}}'+"&stats="+StatsRecord;
}
