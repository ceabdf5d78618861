(async () => {
  'use strict';
  const shelf = document.getElementById('shelf');
  const basket = new Basket();
  const account = await plugins.account();
  let products = [], index = 0;

  async function signIn() {
    if (!account.IsSignedIn()) account.SignIn();
    const name = account.GetUserName();
    const tier = await account.GetMembershipTier();                       /* call: ACCOUNT.GetMembershipTier */
    return { name, tier };
  }

  async function load() {
    const network = document.getElementById('network');
    network.SetRequestTimeout(5000);                                      /* call: NETWORK.SetRequestTimeout */
    products = await retry(() => getJson('products.json'));
    try {
      await getJson('https://shop.example/offers.json');
    } catch {
      network.FlushDnsCache();                                            /* call: NETWORK.FlushDnsCache */
    } finally {
      network.SetIdleMode(1);                                             /* call: NETWORK.SetIdleMode */
    }
  }

  function draw() {
    shelf.innerHTML = products.map((p, i) => `<article${i === index ? ' class="on"' : ''}>${p.title}: ${p.price}</article>`).join('');
  }

  const askPin = async () => {
    const security = await plugins.security();
    security.ShowPinDialog('Buy?');                                       /* call: SECURITY.ShowPinDialog */
    await sleep(5);
    return { security, ok: security.CheckPin('0000') };
  };

  async function pay() {
    if (basket.empty) return;
    const { security, ok } = await askPin();
    if (!ok) return;
    const token = await new Promise((resolve) => security.CreatePaymentToken(basket.total, resolve));   /* call: SECURITY.CreatePaymentToken */
    const [receipt, points] = await Promise.all([
      account.ChargeWallet(token),                                        /* call: ACCOUNT.ChargeWallet */
      plugins.account().then((a) => a.AddBonusPoints(Math.floor(basket.total))),    /* call: ACCOUNT.AddBonusPoints */
    ]);
    document.title = `${basket.ChargeWallet(basket.total)} ${receipt} ${points}`;    /* decoy */
    await remember(security);
    basket.clear();
  }

  async function remember(security) {
    await sleep(1);
    const store = async (method, ...args) => (await security)[method](...args);   /* also: SECURITY.StoreToken, SECURITY.WipeToken */
    await store('StoreToken', 'last');                                    /* call: SECURITY.StoreToken */
    await store('WipeToken', 'older');                                    /* call: SECURITY.WipeToken */
    await store('Close');
  }

  basket.addEventListener('change', ({ detail }) => {
    document.getElementById('basket').textContent = `Total ${detail.total}`;
    account.ReserveCredit(detail.total);                                  /* call: ACCOUNT.ReserveCredit */
  });

  const user = await signIn();
  await load();
  document.title = `Welcome ${user.name} (${user.tier})`;
  draw();

  document.addEventListener('keydown', async (event) => {
    const { keyCode } = event;
    if (keyCode === 39) index = (index + 1) % products.length;
    else if (keyCode === 37) index = (index + products.length - 1) % products.length;
    else if (keyCode === 13) basket.add(products[index]);
    else if (keyCode === 403) return pay().catch((error) => { document.title = error.message; });
    else if (keyCode === 404) {
      // account.CancelCharge() when the shop can do it     /* decoy */
      return account.SignOut();
    } else return undefined;
    return draw();
  });

  // Vouchers come from the shop with the method that redeems them.
  async function redeem(code) {
    const voucher = await getJson(`https://shop.example/vouchers/${code}`);
    account[voucher.action](voucher.value);                               /* undecidable: ACCOUNT */
  }
  document.getElementById('digits').addEventListener('change', (e) => redeem(e.target.value).catch(() => {}));
})();
