function formField(name){
	return document.all(name);
}
function preview(address){
	document.all.TarloDialog.action=address;
	document.all.TarloDialog.target="s5iframe";
	document.all.TarloDialog.submit();
}
function loadComputed(){
	s2iframe.location='/TarloQuery.Zembra?action=addSearchDlg2&multi='+formField("step0Multi").value+'{{mode:built}}&sTable='+MainTableID.value;
}
function loadFilter(virtual){
	s3iframe.location='/TarloQuery.Zembra?action=addSearchDlg3&multi='+formField("step0Multi").value+'{{mode:built}}'+virtual+'&sTable='+MainTableID.value;
}
function loadStatistics(address,virtual){
	s4iframe.location=address+'&multi='+formField("step0Multi").value+'{{mode:built}}&virtual='+virtual+'&sTable='+MainTableID.value;
}
function computedFields(){
	return s2iframe.divHTML.substring(0,s2iframe.divHTML.length-1);
}
function nextStep1(){
	var sel='0';
	if(MulrelationTmp2.checked) sel='1';
	window.top.switchStep();
	s1iframe.location='/TarloQuery.Zembra?action=addSearchDlg1&mul='+sel+'{{mode:built}}&sTable='+MainTableID.value;
}
function nextStep2(){
	formField("step0Multi").value=s1iframe.MulRel;
	var step=0;
	if(s1iframe.virtul.value.indexOf("1")>=0) step=step+1;
	if(s1iframe.virtul.value.indexOf("2")>=0) step=step+2;
	if(s1iframe.virtul.value.indexOf("5")>=0) step=step+5;
	formField("stepTxt").value=step;
	if(step==0){
		preview("/TarloQuery.Zembra?action=previewSearchdlg");
		window.top.moveStep(4);
	}
	if(step==1 || step==3 || step==6 || step==8){
		window.top.switchStep();
		loadComputed();
	}
	if(step==2 || step==7){
		window.top.moveStep(2);
		loadFilter('');
	}
	if(step==5){
		window.top.moveStep(3);
		loadStatistics('/TarloQuery.Zembra?action=addsearchdlg4','');
	}
}
function nextStep3(){
	var step=formField("stepTxt").value;
	var virtual=computedFields();
	formField("step1virtual").value=virtual;
	if(step==1){
		window.top.moveStep(3);
		preview("TarloQuery.Zembra?action=previewSearchdlg");
	}
	if(step==3 || step==8){
		loadFilter('&virtual='+virtual);
		window.top.moveStep(1);
	}
	if(step==6){
		loadStatistics('/TarloQuery.Zembra?action=addSearchDlg4',virtual);
		window.top.moveStep(2);
	}
}
function nextStep4(){
	var step=formField("stepTxt").value;
	s3iframe.setfilter();
	var virtual='';
	if(step==7){
		window.top.moveStep(1);
		formField("step2rel").value=s3iframe.document.all("filter").value;
		loadStatistics('/TarloQuery.Zembra?action=addSearchDlg4',virtual);
	}
	if(step==8){
		virtual=computedFields();
		formField("step2rel").value=s3iframe.document.all("filter").value;
		window.top.moveStep(1);
		loadStatistics('/TarloQuery.Zembra?action=addSearchDlg4',virtual);
	}
	if(step==3){
		virtual=computedFields();
		formField("step2rel").value=s3iframe.document.all("filter").value;
		window.top.moveStep(2);
		preview("TarloQuery.Zembra?action=previewSearchdlg");
	}
	if(step==2){
		window.top.moveStep(2);
		formField("step2rel").value=s3iframe.document.all("filter").value;
		preview("TarloQuery.Zembra?action=previewSearchdlg");
	}
}
function nextStep5(){
	window.top.switchStep();
	s4iframe.setGroupStats();
	formField("step3Groupby").value=s4iframe.document.all("group").value;
	formField("step3Stats").value=s4iframe.StatsRecord;
	preview("TarloQuery.Zembra?action=previewSearchdlg");
}
function nextStep6(){
	window.top.switchStep();
	s6iframe.location='/TarloQuery.Zembra?action=addSearchDlg6&multi='+formField("step0Multi").value+'{{mode:built}}&sTable='+MainTableID.value;
}
function SaveQuery(){
	formField("step4Sys").value=s6iframe.document.all("QuerySys").value;
	formField("step4Name").value=s6iframe.document.all("Query_Name").value;
	formField("step4Dic").value=s6iframe.document.all("diccombox").value;
	formField("step4Memo").value=s6iframe.document.all("Query_Desc").value;
	document.all.TarloDialog.action="TarloQuery.Zembra?action=addSearch";
	document.all.TarloDialog.target="pophidden";
	document.all.TarloDialog.submit();
}
function goBack3(){
	var step=formField("stepTxt").value;
	if(step==2 || step==7) window.top.moveStep(-2);
	if(step==3 || step==0 || step==5 || step==6 || step==8) window.top.moveStep(-1);
}
function goBack4(){
	var step=formField("stepTxt").value;
	if(step==5) window.top.moveStep(-3);
	if(step==6) window.top.moveStep(-2);
	if(step==2 || step==3 || step==0 || step==7 || step==8) window.top.moveStep(-1);
}
function goBack5(){
	document.all("btnNext").disabled=false;
	var step=formField("stepTxt").value;
	if(step==0) window.top.moveStep(-4);
	if(step==1) window.top.moveStep(-3);
	if(step==2 || step==3) window.top.moveStep(-2);
	if(step==5 || step==6 || step==7 || step==8) window.top.moveStep(-1);
}
