{{first:built}}
var strfilter='';
function getfilter(){
	var filterlength=document.all("expresion").length;
	strfilter='';
	if(filterlength==null){
		var value=document.all("expresion").value;
		if(value.trim()!='' && document.all("comparecombox").value!=-1)
			strfilter=document.all("fieldcombox").value+','+document.all("comparecombox").value+','+value+','+document.all("logiccombox").value;
	}else{
		for(var k=0;k<filterlength;k++){
			var value=document.all("expresion")[k].value,comparison=document.all("comparecombox")[k].value,logic=document.all("logiccombox")[k].value;
			if(value.trim()!='' && comparison!=-1 && (logic!=-1 || k==filterlength-1))
				strfilter=strfilter+document.all("fieldcombox")[k].value+','+comparison+','+value+','+logic+'|||';
		}
		strfilter = strfilter.substring(strfilter,strfilter.length-3);
	}
	document.all("filter").value=strfilter;
}
function filterLogic(k){
	return relation2.children[k].querySelector('[id=logiccombox]').value;
}
function addFliter(){
	try{
		{{fresh:built}}if(filterLogic(relation2.children.length-1)!=-1) relation2.insertAdjacentHTML('beforeEnd', divHTML);
	}catch(e){}
}
function decFliter(){
	try{
		var first=-1;
		for(var k=0;k<relation2.children.length && first<0;k++) if(filterLogic(k)==-1) first=k;
		while(first>=0 && relation2.children.length>Math.max(first+1,1)) relation2.children[relation2.children.length-1].remove();
	}catch(e){}
}
