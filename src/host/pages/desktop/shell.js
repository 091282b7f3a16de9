// The desktop's frames, colour scheme and status line.
(function () {
  var root = document.documentElement;
  var words = ['', 'sea', 'olive', 'orange', 'sun'];
  var chosen = root.dataset.scheme;
  function frame(name) { return document.querySelector('iframe[name=' + name + ']'); }
  function byId(id) { return document.getElementById(id); }

  function remember(key, value) {
    try { localStorage.setItem('tarloDesktop.' + key, value); } catch (e) { /* storage is off */ }
  }
  function remembered(key) {
    try { return localStorage.getItem('tarloDesktop.' + key); } catch (e) { return null; }
  }

  // The main frame paints the side pane, so it opens behind the pane's page.
  frame('TarloY').addEventListener('load', function () {
    if (!frame('Zembra').getAttribute('src')) {
      frame('Zembra').src = '/?cmdID=' + (/^#(\d{1,9})$/.exec(location.hash) || ['', '0'])[1];
    }
  });
  frame('TarloY').src = '/?pane=1';

  // Full pages hide the bar while they load; others are known by their load event.
  var bar = byId('hiddenBarForLeft');
  frame('Zembra').addEventListener('load', function () { bar.style.display = 'none'; });

  byId('TarloTipInfo').addEventListener('click', function () { this.style.display = 'none'; });

  // Pages and dialogs in frames wear the desktop's scheme, also those that set no class themselves.
  function dress(element) {
    try {
      element.contentDocument.documentElement.dataset.scheme = root.dataset.scheme;
      element.contentDocument.querySelectorAll('iframe').forEach(dress);
    } catch (e) { /* a foreign page */ }
  }
  document.addEventListener('load', function (event) {
    if (event.target.localName === 'iframe') dress(event.target);
  }, true);

  // Pages set class names such as startHeadolive; the whole desktop follows them. The bare name
  // stands for the scheme that the user chose.
  function wear() {
    var word = byId('startHead').className.replace('startHead', '');
    root.dataset.scheme = words.indexOf(word) > 0 ? word : chosen;
    document.querySelectorAll('iframe').forEach(dress);
  }
  new MutationObserver(wear).observe(byId('startHead'), { attributeFilter: ['class'] });

  document.querySelectorAll('input[name=dtScheme]').forEach(function (input) {
    input.checked = words[input.value] === chosen;
    input.addEventListener('change', function () {
      chosen = words[input.value];
      document.cookie = 'tarloStyle=' + input.value + ';path=/;max-age=31536000;samesite=lax';
      ['startHeadtop', 'startHead', 'startFooter', 'startFooterBottom'].forEach(function (id) {
        byId(id).className = id;
      });
      wear();
      // The session takes the cookie over with the pane; the open page is drawn again behind it.
      frame('TarloY').addEventListener('load', function () {
        try { frame('Zembra').contentWindow.location.reload(); } catch (e) { /* a foreign page */ }
      }, { once: true });
      frame('TarloY').contentWindow.location.reload();
    });
  });

  // Pages write to top.status, which browsers no longer show.
  var status = window.g_sReady;
  Object.defineProperty(window, 'status', {
    configurable: true,
    get: function () { return status; },
    set: function (text) { status = String(text); byId('dtStatus').textContent = status || g_sReady; }
  });

  function showSide(isOpen) {
    document.body.classList.toggle('dt-narrow', !isOpen);
    byId('dtToggle').setAttribute('aria-expanded', String(isOpen));
    remember('side', isOpen ? '1' : '0');
  }
  byId('dtToggle').addEventListener('click', function () {
    showSide(document.body.classList.contains('dt-narrow'));
  });
  document.addEventListener('keydown', function (event) {
    if (event.altKey && !event.ctrlKey && event.code === 'KeyM') { byId('dtToggle').click(); event.preventDefault(); }
  });
  if (remembered('side') === '0') showSide(false);

  window.TarloDesktop = {
    remember: remember,
    remembered: remembered,
    loading: function () { bar.style.display = 'block'; },
    // The start page and folders belong to no module: they wear the user's own scheme.
    ownScheme: function () {
      ['startHeadtop', 'startHead', 'startFooter', 'startFooterBottom'].forEach(function (id) {
        byId(id).className = id;
      });
    },
    scheme: function () { return root.dataset.scheme; }
  };
})();
