// The tool bar in the head: menu entries that the user pinned, kept by the browser.
(function () {
  var bar = document.getElementById('dtTools');
  var ids = (TarloDesktop.remembered('tools') || '').split(',').filter(Boolean);

  function entry(id) {
    return document.querySelector('#dtMenu [data-menu="' + id + '"] > a.dt-item');
  }

  function change(list) {
    ids = list;
    TarloDesktop.remember('tools', ids.join(','));
    draw();
  }

  function draw() {
    bar.textContent = '';
    ids.forEach(function (id) {
      var link = entry(id);
      if (!link) return;  // no longer granted
      var chip = document.createElement('span');
      chip.className = 'dt-tool';
      var open = link.cloneNode(true);
      open.className = '';
      open.removeAttribute('tabindex');
      open.addEventListener('click', TarloDesktop.loading);
      var remove = document.createElement('button');
      remove.type = 'button';
      remove.textContent = '×';
      remove.title = '从工具栏中移去';
      remove.setAttribute('aria-label', '从工具栏中移去 ' + link.textContent);
      remove.addEventListener('click', function () {
        change(ids.filter(function (other) { return other !== id; }));
      });
      chip.append(open, remove);
      bar.append(chip);
    });
  }

  // Gives false for an entry that stands in the bar already or that the menu does not have.
  TarloDesktop.addTool = function (id) {
    id = String(id);
    if (ids.indexOf(id) >= 0 || !entry(id)) return false;
    change(ids.concat(id));
    return true;
  };
  draw();
})();
