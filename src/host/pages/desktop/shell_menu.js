// The menu: an ARIA tree with one tab stop, a filter, and a memory for what is open.
(function () {
  var tree = document.getElementById('dtMenu');
  var filter = document.getElementById('dtFilter');
  var items = Array.from(tree.querySelectorAll('[role=treeitem]'));
  var closed = new Set((TarloDesktop.remembered('closed') || '').split(',').filter(Boolean));
  var opened = new Set((TarloDesktop.remembered('opened') || '').split(',').filter(Boolean));

  function isFolder(item) { return item.hasAttribute('aria-expanded'); }
  function above(item) { return item.parentElement.closest('[role=treeitem]'); }
  function label(item) { return item.firstElementChild.textContent; }
  function visible() {
    return items.filter(function (item) { return item.offsetParent !== null; });
  }

  function open(item, isOpen, isRemembered) {
    item.setAttribute('aria-expanded', String(isOpen));
    if (!isRemembered) return;
    var id = item.dataset.menu;
    closed.delete(id); opened.delete(id);
    (isOpen ? opened : closed).add(id);
    TarloDesktop.remember('closed', Array.from(closed).join(','));
    TarloDesktop.remember('opened', Array.from(opened).join(','));
  }

  function focus(item) {
    if (!item) return;
    items.forEach(function (other) { other.tabIndex = other === item ? 0 : -1; });
    item.focus();
  }

  function activate(item) {
    if (isFolder(item)) open(item, item.getAttribute('aria-expanded') !== 'true', true);
    else item.firstElementChild.click();
  }

  var keys = {
    ArrowDown: function (item, shown) { focus(shown[shown.indexOf(item) + 1]); },
    ArrowUp: function (item, shown) { focus(shown[shown.indexOf(item) - 1]); },
    Home: function (item, shown) { focus(shown[0]); },
    End: function (item, shown) { focus(shown[shown.length - 1]); },
    ArrowRight: function (item, shown) {
      if (!isFolder(item)) return;
      if (item.getAttribute('aria-expanded') === 'true') focus(shown[shown.indexOf(item) + 1]);
      else open(item, true, true);
    },
    ArrowLeft: function (item) {
      if (isFolder(item) && item.getAttribute('aria-expanded') === 'true') open(item, false, true);
      else focus(above(item));
    },
    Enter: activate,
    ' ': activate
  };

  tree.addEventListener('keydown', function (event) {
    var item = event.target.closest('[role=treeitem]');
    if (!item || event.altKey || event.ctrlKey || event.metaKey) return;
    if (keys[event.key]) {
      keys[event.key](item, visible());
      event.preventDefault();
    } else if (event.key.length === 1) {
      // A letter goes to the next entry that begins with it.
      var shown = visible(), at = shown.indexOf(item);
      focus(shown.slice(at + 1).concat(shown.slice(0, at)).find(function (other) {
        return label(other).toLowerCase().startsWith(event.key.toLowerCase());
      }));
    }
  });

  tree.addEventListener('click', function (event) {
    var item = event.target.closest('[role=treeitem]');
    if (!item || !event.target.closest('.dt-item')) return;
    focus(item);
    if (isFolder(item)) activate(item);
    else TarloDesktop.loading();
  });

  filter.addEventListener('input', function () {
    var wanted = filter.value.trim().toLowerCase();
    var kept = new Set();
    items.forEach(function (item) {
      if (label(item).toLowerCase().includes(wanted)) {
        for (var at = item; at; at = above(at)) kept.add(at);
      }
    });
    items.forEach(function (item) {
      item.hidden = !kept.has(item);
      if (isFolder(item)) open(item, wanted ? kept.has(item) : wasOpen(item), false);
    });
    document.getElementById('dtNothing').hidden = kept.size > 0;
    var stop = visible()[0];
    if (stop) items.forEach(function (item) { item.tabIndex = item === stop ? 0 : -1; });
  });
  filter.addEventListener('keydown', function (event) {
    if (event.key === 'ArrowDown') { focus(visible()[0]); event.preventDefault(); }
    if (event.key === 'Enter') {
      var hit = visible().find(function (item) { return !isFolder(item); });
      if (hit) activate(hit);
    }
  });

  function wasOpen(item) {
    var id = item.dataset.menu;
    return opened.has(id) || (!closed.has(id) && item.getAttribute('aria-level') <= 2);
  }
  items.filter(isFolder).forEach(function (item) { open(item, wasOpen(item), false); });

  // Pages opened from the menu say so themselves, since links in other frames open them too.
  TarloDesktop.opened = function (id) {
    var current = tree.querySelector('[role=treeitem][data-menu="' + id + '"]');
    items.forEach(function (item) { item.removeAttribute('aria-current'); });
    var path = [];
    for (var at = current; at; at = above(at)) path.unshift(label(at));
    document.getElementById('dtPath').textContent = path.length ? path.join(' › ') : '首页';
    history.replaceState(null, '', current ? '#' + id : location.pathname);
    if (!current) return;
    current.setAttribute('aria-current', 'page');
    for (at = above(current); at; at = above(at)) open(at, true, false);
    items.forEach(function (item) { item.tabIndex = item === current ? 0 : -1; });
  };
})();
