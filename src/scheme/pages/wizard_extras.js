(function(){
	var opened='{{stamp:script}}',save=SaveQuery,arrive=nextStep6;
	function withState(then){
		fetch('/TarloDialog.Zembra?action=schemeState&prikeyid={{id:address}}').then(function(answer){
			return answer.json();
		}).then(function(state){
			var changed=state.stamp!=opened,note=document.getElementById('dialogNote');
			note.hidden=!changed;
			if(changed) note.textContent='注意：'+(state.stamp=='' ? '此方案已被删除' : state.change)+'，现在保存会覆盖那次修改。';
			then(changed ? state.stamp : null);
		}).catch(function(){
			then(null);
		});
	}
	nextStep6=function(){
		arrive();
		withState(function(){});
	};
	SaveQuery=function(){
		withState(function(stamp){
			if(stamp!==null){
				if(!sAlert(document.getElementById('dialogNote').textContent+'\n\n仍要保存吗？',true)) return;
				opened=stamp;
			}
			save();
		});
	};
})();
